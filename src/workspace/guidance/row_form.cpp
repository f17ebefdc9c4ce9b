#include "workspace/guidance/row_form.h"

#include <QCompleter>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "workspace/qt/qt_text.h"

namespace tavlo {

void RowForm::run(Library& library, const AnalysisRow& row, Keep keep, Copy copy, QWidget* parent) {
  auto* form = new RowForm(library, row, std::move(keep), std::move(copy), parent);
  form->setAttribute(Qt::WA_DeleteOnClose);
  form->open();
}

RowForm::RowForm(Library& library, const AnalysisRow& row, Keep keep, Copy copy, QWidget* parent)
    : QDialog(parent), library_(library), keep_(std::move(keep)), copy_(std::move(copy)) {
  setObjectName(QStringLiteral("frm_LibRow"));
  setWindowTitle(tr("New Row"));
  auto* rows = new QVBoxLayout(this);
  auto* remark = new QLabel(to_qt(row.remark));
  remark->setObjectName(QStringLiteral("lbl_Remark"));
  remark->setWordWrap(true);
  remark->setVisible(!row.remark.empty());
  rows->addWidget(remark);
  auto* scroll = new QScrollArea;
  scroll->setWidget(make_fields(row));
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  rows->addWidget(scroll, 1);
  rows->addWidget(make_buttons());
  resize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 30);
}

QWidget* RowForm::make_fields(const AnalysisRow& row) {
  auto* area = new QWidget;
  auto* form = new QFormLayout(area);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  for (std::size_t i = 0; i < library_.definition.columns.size(); ++i) {
    editors_.push_back(make_field(i, row.fields[i]));
    form->addRow(to_qt(library_.definition.columns[i].Name) + u':', editors_.back());
  }
  return area;
}

QWidget* RowForm::make_field(std::size_t place, const std::string& value) {
  const LibraryColumn& column = library_.definition.columns[place];
  const QString name = QStringLiteral("fld_Row%1").arg(place);
  if (column.Kind == ColumnKind::from_analysis) {
    auto* line = new QLineEdit(to_qt(value));
    line->setObjectName(name);
    line->setCursorPosition(0);
    return line;
  }
  auto* box = new QComboBox;
  box->setObjectName(name);
  box->addItem({});
  for (const std::string& choice : choices_of(library_, place)) box->addItem(to_qt(choice));
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setEditable(column.Kind != ColumnKind::only_list);
  box->setCurrentIndex(column.Selected + 1);
  if (box->completer()) box->completer()->setFilterMode(Qt::MatchContains);
  return box;
}

QWidget* RowForm::make_buttons() {
  auto* row = new QWidget;
  auto* buttons = new QHBoxLayout(row);
  buttons->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& caption, const char* name) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    buttons->addWidget(button);
    return button;
  };
  buttons->addStretch(1);
  QPushButton* const copy = add(tr("&Copy"), "cmd_CopyRow");
  copy->setToolTip(tr("Copies the row with its headings to the clipboard"));
  connect(copy, &QPushButton::clicked, this, [this] { copy_(fields()); });
  QPushButton* const keep = add(tr("&Add to Library"), "cmd_AddRow");
  keep->setDefault(true);
  connect(keep, &QPushButton::clicked, this, &RowForm::accept);
  connect(add(tr("Close"), "cmd_CloseRow"), &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

std::vector<std::string> RowForm::fields() const {
  std::vector<std::string> texts;
  for (const QWidget* const editor : editors_) {
    const auto* const line = qobject_cast<const QLineEdit*>(editor);
    const auto* const box = qobject_cast<const QComboBox*>(editor);
    texts.push_back(from_qt(line ? line->text() : box->currentText()));
  }
  return texts;
}

/// The next row is likely to be of the same device and duty.
void RowForm::remember_choices() {
  const std::vector<std::string> chosen = fields();
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    LibraryColumn& column = library_.definition.columns[i];
    const auto item = std::find(column.Items.begin(), column.Items.end(), chosen[i]);
    const bool is_item = item != column.Items.end() && column.Kind != ColumnKind::from_analysis;
    column.Selected = is_item ? static_cast<std::int32_t>(item - column.Items.begin()) : -1;
  }
}

void RowForm::accept() {
  if (!keep_(fields())) return;
  remember_choices();
  QDialog::accept();
}

}  // namespace tavlo
