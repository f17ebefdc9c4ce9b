#include "workspace/guidance/column_editor.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

enum FieldButton : std::size_t { previous_field, next_field, insert_button, delete_button, save };

void set_up_button(QPushButton& button, const QString& name, const QString& caption,
                   const QString& tip, const char* image) {
  button.setObjectName(name);
  button.setText(caption);
  button.setToolTip(tip);
  button.setAccessibleName(tip);
  if (*image) button.setIcon(icon(QString::fromLatin1(image)));
  button.setAutoDefault(false);
}

}  // namespace

ColumnEditor::ColumnEditor(Library& library) : library_(library) {
  auto* columns = new QHBoxLayout(this);
  columns->addWidget(make_list_side(), 1);
  auto* side = new QVBoxLayout;
  side->addWidget(make_editor(), 1);
  side->addWidget(make_files());
  columns->addLayout(side, 2);
  connect_fields();
}

QWidget* ColumnEditor::make_list_side() {
  auto* side = new QWidget;
  auto* rows = new QVBoxLayout(side);
  rows->setContentsMargins(0, 0, 0, 0);
  lst_Fields_.setObjectName(QStringLiteral("lst_Fields"));
  lst_Fields_.setAccessibleName(tr("Fields"));
  rows->addWidget(&lst_Fields_, 1);
  constexpr const char* images[] = {"back", "forward", "new", "delete", "save"};
  const QString captions[] = {tr("&Previous"), tr("&Next"), tr("&Insert"), tr("De&lete"),
                              tr("&Save Definition")};
  const QString tips[] = {tr("Previous Field"), tr("Next Field"), tr("Insert Field"),
                          tr("Delete Field"), tr("Save Definition File")};
  auto* grid = new QGridLayout;
  for (std::size_t i = 0; i < imgField_.size(); ++i) {
    set_up_button(imgField_[i], QStringLiteral("imgField%1").arg(i), captions[i], tips[i],
                  images[i]);
    const int place = static_cast<int>(i);
    grid->addWidget(&imgField_[i], place / 2, place % 2, 1, i == save ? 2 : 1);
  }
  rows->addLayout(grid);
  return side;
}

QWidget* ColumnEditor::make_editor() {
  auto* side = new QWidget;
  auto* form = new QFormLayout(side);
  form->setContentsMargins(0, 0, 0, 0);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  txt_Name_.setObjectName(QStringLiteral("txt_Name"));
  cbo_Kind_.setObjectName(QStringLiteral("cbo_Kind"));
  for (const char* const kind : column_kinds()) cbo_Kind_.addItem(to_qt(kind));
  txt_Order_.setObjectName(QStringLiteral("txt_Order"));
  txt_Order_.setToolTip(tr("1 is 1st column in data file, 2 is 2nd column, etc"));
  txt_FieldData_.setObjectName(QStringLiteral("txt_FieldData"));
  txt_FieldData_.setTabChangesFocus(true);
  txt_FieldData_.setToolTip(tr("Enter choices, one per line"));
  auto* choices = new QLabel(tr("Enter &choices, one per line"));
  choices->setBuddy(&txt_FieldData_);
  sources_ = make_sources();
  form->addRow(tr("Na&me:"), &txt_Name_);
  form->addRow(tr("&Values:"), &cbo_Kind_);
  form->addRow(tr("&Order:"), &txt_Order_);
  form->addRow(choices);
  form->addRow(sources_);
  form->addRow(&txt_FieldData_);
  return side;
}

QWidget* ColumnEditor::make_sources() {
  auto* row = new QWidget;
  auto* parts = new QHBoxLayout(row);
  parts->setContentsMargins(0, 0, 0, 0);
  cbo_Source_.setObjectName(QStringLiteral("cbo_Source"));
  cbo_Source_.setAccessibleName(tr("Data from Analysis"));
  for (std::size_t i = 0; i < analysis_sources().size(); ++i) {
    cbo_Source_.addItem(to_qt(analysis_sources()[i]));
    if (is_heading(static_cast<AnalysisSource>(i)))
      cbo_Source_.setItemData(static_cast<int>(i), 0, Qt::UserRole - 1);  // can't be chosen
  }
  cbo_Source_.setMinimumContentsLength(20);
  cbo_Source_.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  auto* add = new QPushButton(tr("&Add"));
  add->setObjectName(QStringLiteral("cmd_AddSource"));
  add->setToolTip(tr("Adds what the present analysis gives to this field"));
  add->setAutoDefault(false);
  connect(add, &QPushButton::clicked, this, &ColumnEditor::add_source);
  parts->addWidget(&cbo_Source_, 1);
  parts->addWidget(add);
  return row;
}

QWidget* ColumnEditor::make_files() {
  auto* frame = new QGroupBox(tr("Data file"));
  auto* rows = new QVBoxLayout(frame);
  lbl_RefFile_.setObjectName(QStringLiteral("lbl_RefFile"));
  lbl_DataFile_.setObjectName(QStringLiteral("lbl_DataFile"));
  for (QLabel* const label : {&lbl_RefFile_, &lbl_DataFile_}) {
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setWordWrap(true);
    rows->addWidget(label);
  }
  auto* buttons = new QHBoxLayout;
  const QString captions[] = {tr("Op&en..."), tr("&Reference..."), tr("Cop&y")};
  const QString tips[] = {tr("Open Item Data File"), tr("Reference File (Optional)"),
                          tr("Copy to clipboard")};
  constexpr const char* images[] = {"open", "doc", "copy"};
  for (std::size_t i = 0; i < imgBtn_.size(); ++i) {
    set_up_button(imgBtn_[i], QStringLiteral("imgBtn%1").arg(i), captions[i], tips[i], images[i]);
    connect(&imgBtn_[i], &QPushButton::clicked, this,
            [this, i] { emit image_pressed(static_cast<int>(i)); });
    buttons->addWidget(&imgBtn_[i]);
  }
  buttons->addStretch(1);
  rows->addLayout(buttons);
  return frame;
}

void ColumnEditor::connect_fields() {
  connect(&lst_Fields_, &QListWidget::currentRowChanged, this, &ColumnEditor::show_column);
  connect(&txt_Name_, &QLineEdit::textEdited, this, [this](const QString& name) {
    change([&](LibraryColumn& field) { field.Name = from_qt(name.trimmed()); });
    show_names();
  });
  connect(&cbo_Kind_, &QComboBox::activated, this, [this](int kind) {
    change([&](LibraryColumn& field) { field.Kind = static_cast<ColumnKind>(kind); });
    show_column();
  });
  connect(&txt_Order_, &QSpinBox::valueChanged, this, &ColumnEditor::move_field);
  connect(&txt_FieldData_, &QPlainTextEdit::textChanged, this, &ColumnEditor::take_choices);
  const auto press = [this](FieldButton button, auto act) {
    connect(&imgField_[button], &QPushButton::clicked, this, act);
  };
  press(previous_field, [this] { go_to(lst_Fields_.currentRow() - 1); });
  press(next_field, [this] { go_to(lst_Fields_.currentRow() + 1); });
  press(insert_button, [this] { insert_field(); });
  press(delete_button, [this] { delete_field(); });
  press(save, [this] { emit save_wanted(); });
}

/// Null where there are no fields.
LibraryColumn* ColumnEditor::column() {
  const int row = lst_Fields_.currentRow();
  auto& columns = library_.definition.columns;
  const bool is_there = row >= 0 && row < static_cast<int>(columns.size());
  return is_there ? &columns[static_cast<std::size_t>(row)] : nullptr;
}

template <class Change>
void ColumnEditor::change(Change change) {
  LibraryColumn* const field = column();
  if (is_showing_ || !field) return;
  change(*field);
  emit changed();
}

void ColumnEditor::show_library() {
  show_names();
  show_column();
  const SplitPath split = split_path(library_.data_path);
  lbl_RefFile_.setText(library_.data_path.empty() ? tr("No data file is open.")
                                                  : to_qt(split.folder));
  lbl_DataFile_.setText(to_qt(split.name));
  lbl_DataFile_.setVisible(!split.name.empty());
}

void ColumnEditor::show_names() {
  const int row = std::max(lst_Fields_.currentRow(), 0);
  is_showing_ = true;
  lst_Fields_.clear();
  for (const LibraryColumn& field : library_.definition.columns)
    lst_Fields_.addItem(
        QStringLiteral("%1  %2").arg(lst_Fields_.count() + 1).arg(to_qt(field.Name)));
  lst_Fields_.setCurrentRow(std::min(row, lst_Fields_.count() - 1));
  is_showing_ = false;
}

void ColumnEditor::show_column() {
  if (is_showing_) return;
  is_showing_ = true;
  const LibraryColumn* const field = column();
  const LibraryColumn shown = field ? *field : LibraryColumn();
  QStringList items;
  for (const std::string& item : shown.Items) items << to_qt(item);
  if (from_qt(txt_Name_.text().trimmed()) != shown.Name) txt_Name_.setText(to_qt(shown.Name));
  cbo_Kind_.setCurrentIndex(static_cast<int>(shown.Kind));
  txt_Order_.setRange(1, std::max(lst_Fields_.count(), 1));
  txt_Order_.setValue(lst_Fields_.currentRow() + 1);
  txt_FieldData_.setPlainText(items.join(u'\n'));
  sources_->setVisible(shown.Kind == ColumnKind::from_analysis);
  const std::initializer_list<QWidget*> parts = {&txt_Name_, &cbo_Kind_, &txt_Order_,
                                                 &txt_FieldData_, sources_};
  for (QWidget* const part : parts) part->setEnabled(field != nullptr);
  imgField_[previous_field].setEnabled(lst_Fields_.currentRow() > 0);
  imgField_[next_field].setEnabled(lst_Fields_.currentRow() + 1 < lst_Fields_.count());
  imgField_[delete_button].setEnabled(field != nullptr);
  is_showing_ = false;
}

void ColumnEditor::go_to(int row) {
  if (row >= 0 && row < lst_Fields_.count()) lst_Fields_.setCurrentRow(row);
}

void ColumnEditor::insert_field() {
  auto& columns = library_.definition.columns;
  if (columns.size() == most_library_columns) return;
  const int row = std::max(lst_Fields_.currentRow(), 0);
  columns.insert(columns.begin() + row, LibraryColumn{from_qt(tr("New Field"))});
  show_names();
  show_column();
  emit changed();
  emit rearranged();
  txt_Name_.setFocus();
  txt_Name_.selectAll();
}

void ColumnEditor::delete_field() {
  auto& columns = library_.definition.columns;
  if (!column()) return;
  columns.erase(columns.begin() + lst_Fields_.currentRow());
  show_names();
  show_column();
  emit changed();
  emit rearranged();
}

void ColumnEditor::move_field(int order) {
  const int from = lst_Fields_.currentRow();
  if (is_showing_ || !column() || order - 1 == from) return;
  auto& columns = library_.definition.columns;
  LibraryColumn moved = std::move(columns[static_cast<std::size_t>(from)]);
  columns.erase(columns.begin() + from);
  columns.insert(columns.begin() + (order - 1), std::move(moved));
  show_names();
  lst_Fields_.setCurrentRow(order - 1);
  emit changed();
  emit rearranged();
}

void ColumnEditor::take_choices() {
  change([this](LibraryColumn& field) {
    field.Items.clear();
    for (const QString& line : txt_FieldData_.toPlainText().split(u'\n'))
      if (const QString item = line.trimmed(); !item.isEmpty())
        field.Items.push_back(from_qt(item));
  });
}

void ColumnEditor::add_source() {
  change(
      [this](LibraryColumn& field) { field.Items.push_back(from_qt(cbo_Source_.currentText())); });
  show_column();
}

}  // namespace tavlo
