#include "workspace/frame/sample_dialog.h"

#include <QHBoxLayout>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "actions/sample.h"

namespace tavlo {

SampleDialog::SampleDialog(Program& program, std::function<void()> drawn, QWidget* parent)
    : QDialog(parent),
      program_(program),
      drawn_(std::move(drawn)),
      life_(program.session, program.commands) {
  setObjectName(QStringLiteral("frm_MC"));
  setWindowTitle(tr("Monte Carlo"));
  auto* column = new QVBoxLayout(this);
  auto* tabs = new QTabWidget;
  tabs->addTab(&life_, tr("&Dist"));
  tabs->addTab(&suspensions_, tr("S&uspensions"));
  tabs->addTab(&runs_, tr("Runs and &Fits"));
  column->addWidget(tabs, 1);
  column->addWidget(make_buttons());
  cmd_Sample_->setDefault(true);  // of a dialog that it stands in
}

QWidget* SampleDialog::make_buttons() {
  auto* whole = new QWidget;
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  lbl_Status_.setObjectName(QStringLiteral("lbl_Status"));
  lbl_Status_.setWordWrap(true);
  connect(&program_.views, &ViewSignals::status_text, &lbl_Status_, &QLabel::setText);
  cmd_Sample_ = new QPushButton(tr("&Sample"));
  cmd_Sample_->setObjectName(QStringLiteral("cmd_Sample"));
  cmd_Close_ = new QPushButton;
  cmd_Close_->setObjectName(QStringLiteral("cmd_Close"));
  cmd_Close_->setAutoDefault(false);
  connect(cmd_Sample_, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmd_Close_, &QPushButton::clicked, this, &QDialog::reject);
  row->addWidget(&lbl_Status_, 1);
  row->addWidget(cmd_Sample_);
  row->addWidget(cmd_Close_);
  show_work(false);
  return whole;
}

void SampleDialog::open_for(std::int16_t method) {
  method_ = std::max<std::int16_t>(method, 0);
  lbl_Status_.clear();
  open();
  cmd_Sample_->setFocus();
}

/// While a sample is made the other button ends it.
void SampleDialog::show_work(bool working) {
  is_working_ = working;
  cmd_Sample_->setEnabled(!working);
  cmd_Close_->setText(working ? tr("Cancel") : tr("Close"));
}

void SampleDialog::accept() {
  if (is_working_) return;
  SampleForm form;
  form.method = method_;
  life_.read_into(form);
  suspensions_.read_into(form);
  runs_.read_into(form);
  const std::int64_t before = program_.session.project.work;
  show_work(true);
  program_.commands.run([&] { make_sample_project(program_.session, form); });
  show_work(false);
  if (program_.session.project.work == before) return;
  life_.show_seeds(form.seeds);
  drawn_();
  cmd_Sample_->setFocus();
}

void SampleDialog::reject() {
  if (is_working_) return program_.progress.want_stop();
  QDialog::reject();
}

}  // namespace tavlo
