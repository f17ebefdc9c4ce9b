#include "actions/program_end.h"

#include "files/settings_file.h"

namespace tavlo {

void End_Program(Session& session) {
  const ProgramPlaces& places = session.places;
  if (places.IniPath.empty() || !places.settings_are_read) return;
  const FileResult saved = save_settings(session.ports.file_system, session.settings, places);
  if (saved) return;
  session.ports.prompts.show(
      {"Settings",
       "The settings can't be saved.\n" + settings_path(places.IniPath) + ": " + saved.message,
       BoxIcon::exclamation, BoxButtons::ok});
}

}  // namespace tavlo
