// Own store: what the windows remember beside the settings file, whose form is shared with
// other programs: where windows stood, which bars were shown. A store that is damaged or
// can't be written costs no more than that.
#pragma once

#include <QSettings>
#include <memory>

#include "project/program_places.h"

namespace tavlo {

namespace store_key {
inline constexpr QLatin1String geometry{"frame/geometry"};
inline constexpr QLatin1String bars{"frame/bars"};
inline constexpr QLatin1String windows{"frame/windows"};
inline constexpr QLatin1String hidden_columns{"sheet/hidden_columns"};
}  // namespace store_key

/// The file windows.ini beside the settings file; null before the start has found its
/// folder. It is written when the value goes.
std::unique_ptr<QSettings> own_store(const ProgramPlaces& places);

}  // namespace tavlo
