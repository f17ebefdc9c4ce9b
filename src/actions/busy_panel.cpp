#include "actions/busy_panel.h"

namespace tavlo {

BusyPanel::BusyPanel(Session& session, int fit_index) : session_(session), index_(fit_index) {
  session_.fitting.told.emplace();
  session_.gFitForm(index_)->busy = true;
  show_caption(language_text::working);
}

BusyPanel::~BusyPanel() {
  session_.fitting.told.reset();
  session_.gFitForm(index_)->busy = false;
  show_caption(language_text::calculate);
  const std::string& remark = session_.gFitForm(index_)->remark;
  session_.ports.views.status(remark.empty() ? "Ready" : "Ready.  " + remark);
}

void BusyPanel::show_caption(std::size_t text) {
  session_.ports.views.fit_button_caption(index_, button_caption(session_.LanguageText, text));
}

}  // namespace tavlo
