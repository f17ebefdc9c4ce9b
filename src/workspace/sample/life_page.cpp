#include "workspace/sample/life_page.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <algorithm>

#include "actions/sample.h"
#include "analyses/stated_life.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int longest_number = 60;  // characters
constexpr int rows_of_parameters = 4;

QString numbered(const char* name, std::size_t index) {
  return QStringLiteral("%1_%2").arg(to_qt(name)).arg(index);
}

/// Row and column of a parameter: the populations, a row each, and the minimum life below.
std::pair<int, int> place_of(int box) {
  if (box == 0) return {rows_of_parameters - 1, 1};
  return {(box - 2) / 4, (box - 2) % 4};
}

}  // namespace

LifePage::LifePage(Session& session, UserCommands& commands)
    : session_(session), commands_(commands) {
  auto* grid = new QGridLayout(this);
  QWidget* const models = make_models();
  grid->addWidget(models, 0, 0, 3, 1);
  grid->addWidget(make_parameters(), 0, 1);
  grid->addWidget(make_drawing(), 1, 1);
  grid->addWidget(make_seeds(), 2, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(0, 1);
  const auto models_shown = sampled_models();
  for (std::size_t i = 0; i < models_shown.size(); ++i)
    if (models_shown[i].code == SampleForm().model) Opt_Dist_[i]->setChecked(true);
}

QWidget* LifePage::make_models() {
  auto* frame = new QGroupBox(tr("Distribution"));
  auto* column = new QVBoxLayout(frame);
  for (const SampledModel& model : sampled_models()) {
    auto* option = new QRadioButton(tr(model.caption));
    option->setObjectName(numbered("Opt_Dist", Opt_Dist_.size()));
    if (!is_sampled(model.code))
      option->setToolTip(tr("Samples are not drawn from it: the points are just numbered."));
    connect(option, &QRadioButton::toggled, this, [this, &model](bool on) {
      if (on) choose(model);
    });
    column->addWidget(option);
    Opt_Dist_.push_back(option);
  }
  column->addStretch();
  return frame;
}

QWidget* LifePage::make_parameters() {
  auto* frame = new QGroupBox(tr("Parameters"));
  auto* grid = new QGridLayout(frame);
  for (const int box : {2, 3, 4, 6, 7, 8, 10, 11, 12, 0}) {
    const auto i = static_cast<std::size_t>(box);
    lblPar_[i] = new QLabel;
    txt_par_[i] = new QLineEdit;
    txt_par_[i]->setObjectName(numbered("txt_par", i));
    txt_par_[i]->setMaxLength(longest_number);
    lblPar_[i]->setBuddy(txt_par_[i]);
    lblPar_[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const auto [row, column] = place_of(box);
    grid->addWidget(lblPar_[i], row, 2 * column);
    grid->addWidget(txt_par_[i], row, 2 * column + 1);
  }
  grid->setRowStretch(rows_of_parameters, 1);
  frame->setMinimumHeight(frame->sizeHint().height());  // whatever rows a model has
  return frame;
}

QWidget* LifePage::make_drawing() {
  auto* frame = new QGroupBox(tr("Sample"));
  auto* row = new QHBoxLayout(frame);
  cbo_SampSize_ = new QComboBox;
  cbo_SampSize_->setObjectName(QStringLiteral("cbo_SampSize"));
  cbo_SampSize_->setEditable(true);
  cbo_SampSize_->setInsertPolicy(QComboBox::NoInsert);
  cbo_SampSize_->lineEdit()->setMaxLength(longest_number);
  for (const char* size : {"5", "10", "20", "30", "50", "100", "200", "500", "1000", "10000"})
    cbo_SampSize_->addItem(to_qt(size));
  cbo_SampSize_->setCurrentText(QStringLiteral("30"));
  auto* caption = new QLabel(tr("Sample Si&ze"));
  caption->setBuddy(cbo_SampSize_);
  row->addWidget(caption);
  row->addWidget(cbo_SampSize_);
  row->addSpacing(fontMetrics().averageCharWidth() * 2);
  const std::array captions = {tr("&Monte Carlo"), tr("&Precise")};
  const std::array hints = {tr("Points by chance"), tr("Points on the line of the model")};
  for (std::size_t i = 0; i < Opt_Rand_.size(); ++i) {
    Opt_Rand_[i] = new QRadioButton(captions[i]);
    Opt_Rand_[i]->setObjectName(numbered("Opt_Rand", i));
    Opt_Rand_[i]->setToolTip(hints[i]);
    row->addWidget(Opt_Rand_[i]);
  }
  Opt_Rand_[0]->setChecked(true);
  row->addStretch();
  return frame;
}

QWidget* LifePage::make_seeds() {
  auto* frame = new QGroupBox(tr("Seeds"));
  auto* grid = new QGridLayout(frame);
  auto* note = new QLabel(
      tr("To repeat a 'random' set, enter the same 4 seed numbers (between 1 and 2,147,483,645) "
         "below before clicking \"Sample\"."));
  note->setWordWrap(true);
  grid->addWidget(note, 0, 0, 1, 5);
  for (std::size_t i = 0; i < txt_Seed_.size(); ++i) {
    txt_Seed_[i] = new QLineEdit;
    txt_Seed_[i]->setObjectName(numbered("txt_Seed", i));
    txt_Seed_[i]->setAccessibleName(tr("Seed %1").arg(i + 1));
    txt_Seed_[i]->setToolTip(tr("Enter number between 1 and 2,147,483,645"));
    txt_Seed_[i]->setMaxLength(longest_number);
    txt_Seed_[i]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("2147483647__")));
    connect(txt_Seed_[i], &QLineEdit::editingFinished, this, [this, i] { check_seed(i); });
    grid->addWidget(txt_Seed_[i], 1, static_cast<int>(i));
  }
  auto* others = new QPushButton(tr("&New Seeds"));
  others->setObjectName(QStringLiteral("cmd_NewSeeds"));
  others->setToolTip(tr("Another sample of the same plan"));
  others->setAutoDefault(false);
  connect(others, &QPushButton::clicked, this, &LifePage::draw_seeds);
  grid->addWidget(others, 1, 4);
  show_seeds(present_seeds(session_));
  return frame;
}

/// Boxes that the person has typed into keep their numbers where a model sets none.
void LifePage::choose(const SampledModel& model) {
  for (std::size_t i = 0; i < txt_par_.size(); ++i) {
    if (!txt_par_[i]) continue;
    const auto box = std::find_if(model.boxes.begin(), model.boxes.end(), [i](const auto& each) {
      return each.index == static_cast<int>(i);
    });
    const bool is_shown = box != model.boxes.end();
    lblPar_[i]->setVisible(is_shown);
    txt_par_[i]->setVisible(is_shown);
    if (!is_shown) continue;
    lblPar_[i]->setText(tr(box->label));
    txt_par_[i]->setAccessibleName(tr(box->label));
    if (box->is_set || !txt_par_[i]->isModified()) txt_par_[i]->setText(to_qt(box->value));
  }
}

const SampledModel& LifePage::chosen() const {
  const auto is_chosen = [](const QRadioButton* option) { return option->isChecked(); };
  const auto option = std::find_if(Opt_Dist_.begin(), Opt_Dist_.end(), is_chosen);
  return sampled_models()[static_cast<std::size_t>(option - Opt_Dist_.begin())];
}

void LifePage::draw_seeds() {
  commands_.run([this] { show_seeds(next_seeds(session_)); });
}

/// A box without a seed asks for new ones; a seed stays as it was typed.
void LifePage::check_seed(std::size_t i) {
  if (!is_seed(session_, from_qt(txt_Seed_[i]->text()))) draw_seeds();
}

void LifePage::show_seeds(const std::array<std::string, WichmannHill::streams>& seeds) {
  for (std::size_t i = 0; i < seeds.size(); ++i) {
    txt_Seed_[i]->setText(to_qt(seeds[i]));
    txt_Seed_[i]->setCursorPosition(0);
  }
}

void LifePage::read_into(SampleForm& form) const {
  form.model = chosen().code;
  for (std::size_t i = 0; i < txt_par_.size(); ++i)
    form.parameters[i] = txt_par_[i] ? from_qt(txt_par_[i]->text()) : std::string();
  form.size = from_qt(cbo_SampSize_->currentText());
  form.is_precise = Opt_Rand_[1]->isChecked();
  for (std::size_t i = 0; i < form.seeds.size(); ++i) form.seeds[i] = from_qt(txt_Seed_[i]->text());
}

}  // namespace tavlo
