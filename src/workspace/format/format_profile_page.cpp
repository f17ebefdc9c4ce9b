#include "workspace/format/format_profile_page.h"

#include "files/profiles.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

ProfilePage::ProfilePage(FormatDraft& draft) : FormatPage(draft) {
  add_types();
  add_files();
  end_rows();
}

void ProfilePage::add_types() {
  cbo_ChtType_ = make_list(false);
  cbo_ChtType_->setObjectName(QStringLiteral("cbo_ChtType"));
  for (const char* type : chart_types()) cbo_ChtType_->addItem(to_qt(type));
  connect(cbo_ChtType_, &QComboBox::textActivated, this,
          [this](const QString& type) { take_type(from_qt(type)); });
  add_group(tr("Chart type"));
  add_row(tr("Chart &type"), {cbo_ChtType_});
}

void ProfilePage::add_files() {
  const auto button = [this](const QString& name, const QString& caption, const QString& tip) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    made->setToolTip(tip);
    made->setAutoDefault(false);
    return made;
  };
  auto* load = button(QStringLiteral("cmd_Load"), tr("&Load..."),
                      tr("Gives the chart the looks in a profile file"));
  auto* save = button(QStringLiteral("cmd_Save"), tr("&Save..."),
                      tr("Keeps the looks of this chart in a profile file"));
  connect(load, &QPushButton::clicked, this, draft().commands().slot([this] { cmd_Load(); }));
  connect(save, &QPushButton::clicked, this,
          draft().commands().slot([this] { emit save_wanted(); }));
  add_group(tr("Profile file"));
  add_row(tr("Profile"), {load, save});
}

void ProfilePage::take_type(const std::string& type) {
  if (type == browse_chart_type) return cmd_Load();
  draft().replace([&](Chart& chart) {
    apply_chart_type(chart, type);
    return true;
  });
}

void ProfilePage::cmd_Load() {
  draft().replace([this](Chart& chart) { return load_profile(draft().session(), chart); });
  show_chart();
}

// A profile may carry a name that is none of the list's.
void ProfilePage::show_chart() {
  FormatPage::show_chart();
  cbo_ChtType_->setCurrentIndex(cbo_ChtType_->findText(to_qt(draft().chart().Profile)));
}

}  // namespace tavlo
