#include "workspace/qt/own_store.h"

#include "workspace/qt/qt_text.h"

namespace tavlo {

std::unique_ptr<QSettings> own_store(const ProgramPlaces& places) {
  if (places.IniPath.empty()) return nullptr;
  return std::make_unique<QSettings>(to_qt(places.IniPath + "/windows.ini"), QSettings::IniFormat);
}

}  // namespace tavlo
