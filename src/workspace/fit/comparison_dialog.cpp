#include "workspace/fit/comparison_dialog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "actions/compare.h"
#include "workspace/fit/fit_choices.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr const char* method_captions[] = {"&Standard Regression", "&Maximum Likelihood",
                                           "S&pecial Regression"};

QString numbered(const char* name, std::size_t index) {
  return QStringLiteral("%1_%2").arg(to_qt(name)).arg(index);
}

}  // namespace

void ComparisonDialog::run(Session& session, UserCommands& commands, int data_index,
                           std::function<void()> done, QWidget* parent) {
  auto* dialog = new ComparisonDialog(session, commands, std::move(done), parent);
  dialog->choose(data_index);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

ComparisonDialog::ComparisonDialog(Session& session, UserCommands& commands,
                                   std::function<void()> done, QWidget* parent)
    : QDialog(parent), session_(session), commands_(commands), done_(std::move(done)) {
  setObjectName(QStringLiteral("frm_Dist"));
  setWindowTitle(tr("Distribution Analysis"));
  lay_out();
}

QWidget* ComparisonDialog::make_methods() {
  auto* frame = new QGroupBox(tr("Method"));
  auto* column = new QVBoxLayout(frame);
  for (std::size_t i = 0; i < opt_Meth_.size(); ++i) {
    opt_Meth_[i] = new QRadioButton(tr(method_captions[i]));
    opt_Meth_[i]->setObjectName(numbered("opt_Meth", i));
    connect(opt_Meth_[i], &QRadioButton::toggled, this, &ComparisonDialog::show_what_fits);
    column->addWidget(opt_Meth_[i]);
  }
  return frame;
}

QWidget* ComparisonDialog::make_models() {
  auto* frame = new QGroupBox(tr("Model"));
  auto* grid = new QGridLayout(frame);
  const int rows = (static_cast<int>(compared_models().size()) + 1) / 2;
  for (const ComparedModel& model : compared_models()) {
    const int place = static_cast<int>(chk_Model_.size());
    auto* box = new QCheckBox(tr(model.caption));
    box->setObjectName(numbered("chk_Model", chk_Model_.size()));
    box->setChecked(model.code == model_code::weibull2);
    grid->addWidget(box, place % rows, place / rows);
    chk_Model_.push_back(box);
  }
  return frame;
}

void ComparisonDialog::lay_out() {
  auto* grid = new QGridLayout(this);
  auto* caption = new QLabel(tr("&Data set"));
  caption->setBuddy(&lst_DataSet_);
  lst_DataSet_.setObjectName(QStringLiteral("lst_DataSet"));
  lst_DataSet_.setAccessibleName(tr("Data set"));
  for (int i = 1; i <= session_.project.data.bound(); ++i)
    lst_DataSet_.addItem(to_qt(session_.project.data(i).Title));
  QWidget* const models = make_models();
  auto* go = new QPushButton(tr("G&o"));
  go->setObjectName(QStringLiteral("cmd_Go"));
  go->setDefault(true);
  connect(go, &QPushButton::clicked, this, &QDialog::accept);
  grid->addWidget(caption, 0, 0);
  grid->addWidget(&lst_DataSet_, 1, 0);
  grid->addWidget(make_methods(), 2, 0);
  grid->addWidget(models, 0, 1, 3, 1);
  grid->addWidget(go, 3, 1, Qt::AlignRight);
}

void ComparisonDialog::choose(int data_index) {
  lst_DataSet_.setCurrentRow(data_index - 1);
  const int method = session_.gFitForm(data_index)->nMethod;
  opt_Meth_[static_cast<std::size_t>(std::clamp(method, 0, 2))]->setChecked(true);
}

/// The base of the likelihood-ratio test can't be left out, and what the method can't fit can't
/// be chosen; a tick there waits for a method that can.
void ComparisonDialog::show_what_fits() {
  const bool has_base = method() == method_code::mle;
  for (std::size_t i = 0; i < chk_Model_.size(); ++i) {
    const std::int16_t code = compared_models()[i].code;
    const bool is_base = has_base && code == model_code::weibull2;
    const std::string why = why_not_fitted(*find_model(code), method());
    if (is_base) chk_Model_[i]->setChecked(true);
    chk_Model_[i]->setEnabled(!is_base && why.empty());
    chk_Model_[i]->setToolTip(is_base ? tr("The base of the likelihood-ratio test") : to_qt(why));
  }
}

int ComparisonDialog::method() const {
  const auto is_chosen = [](const QRadioButton* button) { return button && button->isChecked(); };
  const auto chosen = std::find_if(opt_Meth_.begin(), opt_Meth_.end(), is_chosen);
  return chosen == opt_Meth_.end() ? 0 : static_cast<int>(chosen - opt_Meth_.begin());
}

std::vector<std::int16_t> ComparisonDialog::ticked() const {
  std::vector<std::int16_t> codes;
  for (std::size_t i = 0; i < chk_Model_.size(); ++i)
    if (chk_Model_[i]->isChecked() && find_model(compared_models()[i].code)->is_fitted_by(method()))
      codes.push_back(compared_models()[i].code);
  return codes;
}

// The dialog is gone before boxes come, and these before another window comes to the front.
void ComparisonDialog::accept() {
  const int index = lst_DataSet_.currentRow() + 1;
  const auto chosen = static_cast<std::int16_t>(method());
  QDialog::accept();
  commands_.run_later([&session = session_, index, chosen, codes = ticked()] {
    Dist_Analysis(session, index, chosen, codes);
  });
  commands_.run_later(done_);
}

}  // namespace tavlo
