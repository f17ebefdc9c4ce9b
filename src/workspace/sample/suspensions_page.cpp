#include "workspace/sample/suspensions_page.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr const char* captions[] = {
    "&Left tail suspensions (Suspend first 'n' data points)",
    "Specific &points, separated by spaces.  ('3 5 7' will suspend points 3, 5, and 7)",
    "R&andom suspensions. (Enter number of random suspensions)",
    "&Right tail suspensions (Suspend the last 'n' data points)",
};

/// Random ones are made last, of what the others have left.
constexpr std::array<std::size_t, 4> order = {SampleForm::left, SampleForm::points,
                                              SampleForm::right, SampleForm::random};

}  // namespace

SuspensionsPage::SuspensionsPage() {
  auto* grid = new QGridLayout(this);
  for (const std::size_t i : order) {
    auto* caption = new QLabel(tr(captions[i]));
    caption->setWordWrap(true);
    txt_Susp_[i] = new QLineEdit;
    txt_Susp_[i]->setObjectName(QStringLiteral("txt_Susp_%1").arg(i));
    caption->setBuddy(txt_Susp_[i]);
    const int row = grid->rowCount();
    grid->addWidget(caption, row, 0);
    grid->addWidget(txt_Susp_[i], row, 1);
    if (i != SampleForm::right) continue;
    chk_Susp_ = new QCheckBox(tr("Mark Right Tail suspensions at last failure."));
    chk_Susp_->setObjectName(QStringLiteral("chk_Susp"));
    grid->addWidget(chk_Susp_, row + 1, 1);
  }
  auto* clear = new QPushButton(tr("Cl&ear"));
  clear->setObjectName(QStringLiteral("cmdClearSusp"));
  clear->setAutoDefault(false);
  connect(clear, &QPushButton::clicked, this, [this] {
    for (QLineEdit* box : txt_Susp_) box->clear();
  });
  grid->addWidget(clear, grid->rowCount(), 1, Qt::AlignLeft);
  auto* note = new QLabel(
      tr("Note:  If \"Precise\" option is selected on the Dist tab, a precise set will be "
         "generated, and THEN the suspensions will be made.  This will not result in a perfect fit "
         "due to the suspensions."));
  note->setWordWrap(true);
  grid->addWidget(note, grid->rowCount(), 0, 1, 2);
  grid->setRowStretch(grid->rowCount(), 1);
  grid->setColumnStretch(0, 3);
  grid->setColumnStretch(1, 2);
}

void SuspensionsPage::read_into(SampleForm& form) const {
  for (std::size_t i = 0; i < txt_Susp_.size(); ++i)
    form.suspensions[i] = from_qt(txt_Susp_[i]->text());
  form.right_at_last_failure = chk_Susp_->isChecked();
}

}  // namespace tavlo
