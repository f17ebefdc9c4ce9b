#include "workspace/sample/runs_page.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "project/fit_records.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

/// Those of one life that need nothing else to be fitted.
bool can_be_added(const Model& model) {
  const bool asks_for_slope = model.fixed_slope == 0;
  return model.family != Family::none && *model.command_name != '\0' && !asks_for_slope &&
         model.is_fitted_by(method_code::x_on_y);
}

QPushButton* make_button(const QString& caption, const char* name) {
  auto* button = new QPushButton(caption);
  button->setObjectName(to_qt(name));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

RunsPage::RunsPage() {
  auto* column = new QVBoxLayout(this);
  column->addWidget(make_counts());
  column->addWidget(make_fits(), 1);
  follow_choice();
}

QWidget* RunsPage::make_counts() {
  auto* frame = new QGroupBox(tr("Planned test"));
  auto* rows = new QFormLayout(frame);
  txt_Runs_ = new QLineEdit(QStringLiteral("1"));
  txt_Runs_->setObjectName(QStringLiteral("txt_Runs"));
  txt_Runs_->setToolTip(
      tr("1 to 100,000.  With more than 1 the log shows how far the parameters spread, and charts "
         "show them."));
  txt_Group_ = new QLineEdit;
  txt_Group_->setObjectName(QStringLiteral("txt_Group"));
  txt_Group_->setPlaceholderText(tr("250, or 100 200 400"));
  txt_Group_->setToolTip(
      tr("Failures are found at the next inspection: at multiples of one time, or at the times of "
         "a list, behind whose last the units are suspended."));
  rows->addRow(tr("Number of Ru&ns"), txt_Runs_);
  rows->addRow(tr("&Group or inspection pattern"), txt_Group_);
  return frame;
}

QWidget* RunsPage::make_fits() {
  auto* frame = new QGroupBox(tr("Fits of each sample"));
  auto* grid = new QGridLayout(frame);
  cbo_Model_ = new QComboBox;
  cbo_Model_->setObjectName(QStringLiteral("cbo_Model"));
  cbo_Model_->setAccessibleName(tr("Model"));
  for (const Model& model : models())
    if (can_be_added(model)) cbo_Model_->addItem(to_qt(model.plain_name), model.code);
  cbo_Method_ = new QComboBox;
  cbo_Method_->setObjectName(QStringLiteral("cbo_Method"));
  cbo_Method_->setAccessibleName(tr("Method"));
  for (const Method& method : methods())
    cbo_Method_->addItem(to_qt(method.panel_caption), method.code);
  chk_Censored_ = new QCheckBox(tr("&Censored"));
  chk_Censored_->setObjectName(QStringLiteral("chk_Censored"));
  chk_Censored_->setToolTip(tr("Suspensions take part in the likelihood of a mixture."));
  cmd_Add_ = make_button(tr("Add F&it"), "cmd_Fit_0");
  cmd_Delete_ = make_button(tr("D&elete Fit"), "cmd_Fit_1");
  cbo_FitNum_ = new QListWidget;
  cbo_FitNum_->setObjectName(QStringLiteral("cbo_FitNum"));
  cbo_FitNum_->setAccessibleName(tr("Fits of each sample"));
  connect(cmd_Add_, &QPushButton::clicked, this, &RunsPage::add_fit);
  connect(cmd_Delete_, &QPushButton::clicked, this, &RunsPage::delete_fit);
  connect(cbo_Model_, &QComboBox::currentIndexChanged, this, &RunsPage::follow_choice);
  connect(cbo_Method_, &QComboBox::currentIndexChanged, this, &RunsPage::follow_choice);
  connect(cbo_FitNum_, &QListWidget::currentRowChanged, this, &RunsPage::follow_choice);
  grid->addWidget(cbo_Model_, 0, 0);
  grid->addWidget(cbo_Method_, 0, 1);
  grid->addWidget(chk_Censored_, 0, 2);
  grid->addWidget(cmd_Add_, 0, 3);
  grid->addWidget(cbo_FitNum_, 1, 0, 1, 3);
  grid->addWidget(cmd_Delete_, 1, 3, Qt::AlignTop);
  auto* note = new QLabel(
      tr("Without one, runs fit the model of the sample by the method of the fit panel."));
  note->setWordWrap(true);
  grid->addWidget(note, 2, 0, 1, 4);
  return frame;
}

FitRequest RunsPage::request() const {
  FitRequest request;
  request.model = static_cast<std::int16_t>(cbo_Model_->currentData().toInt());
  request.method = static_cast<std::int16_t>(cbo_Method_->currentData().toInt());
  request.censored = chk_Censored_->isChecked() && chk_Censored_->isEnabled();
  const Model& model = *find_model(request.model);
  if (model.fixes_slope()) request.slope = model.fixed_slope;
  return request;
}

void RunsPage::add_fit() {
  const FitRequest wanted = request();
  const auto same = std::find(fits_.begin(), fits_.end(), wanted);
  const auto row = static_cast<int>(same - fits_.begin());
  if (same == fits_.end()) fits_.push_back(wanted);
  show_fits(row);
}

void RunsPage::delete_fit() {
  const int row = cbo_FitNum_->currentRow();
  if (row < 0) return;
  fits_.erase(fits_.begin() + row);
  show_fits(std::min(row, static_cast<int>(fits_.size()) - 1));
}

void RunsPage::show_fits(int row) {
  cbo_FitNum_->clear();
  for (const FitRequest& fit : fits_)
    cbo_FitNum_->addItem(
        QStringLiteral("%1  %2").arg(cbo_FitNum_->count() + 1).arg(to_qt(full_label(fit))));
  cbo_FitNum_->setCurrentRow(row);
  follow_choice();
}

void RunsPage::follow_choice() {
  const int model = cbo_Model_->currentData().toInt();
  const int method = cbo_Method_->currentData().toInt();
  chk_Censored_->setEnabled(has_censored_choice(model, method));
  const bool is_fitted = find_model(model)->is_fitted_by(method);
  cmd_Add_->setEnabled(is_fitted);
  cmd_Add_->setToolTip(is_fitted ? QString() : tr("There is no fit of this model by this method."));
  cmd_Delete_->setEnabled(cbo_FitNum_->currentRow() >= 0);
}

void RunsPage::read_into(SampleForm& form) const {
  form.runs = from_qt(txt_Runs_->text());
  form.group = from_qt(txt_Group_->text());
  form.fits = fits_;
}

}  // namespace tavlo
