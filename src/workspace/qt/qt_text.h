// Text on its way between the core (UTF-8) and the windows (QString).
#pragma once

#include <QString>
#include <string>

namespace tavlo {

inline QString to_qt(const std::string& utf8) { return QString::fromStdString(utf8); }
inline QString to_qt(const char* utf8) { return QString::fromUtf8(utf8); }
inline std::string from_qt(const QString& text) { return text.toStdString(); }

}  // namespace tavlo
