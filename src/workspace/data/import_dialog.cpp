#include "workspace/data/import_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "files/column_names.h"
#include "workspace/format/format_fields.h"
#include "workspace/qt/look.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/tones.h"

namespace tavlo {

namespace {

/// More than anybody looks at; the columns behind are as their headings tell.
constexpr std::size_t most_columns = 40;
constexpr int point_column = 0;
constexpr int list_row = 0;
constexpr QSize usual_size(900, 600);
constexpr double most_of_screen = 0.94;

struct Separator {
  char sign;
  const char* name;
};

constexpr std::array<Separator, 5> separators = {
    {{',', "Comma"}, {';', "Semicolon"}, {'\t', "Tab"}, {' ', "Blanks"}, {'|', "Bar"}}};

QString separator_name(char sign) {
  const auto found = std::find_if(separators.begin(), separators.end(),
                                  [sign](const Separator& each) { return each.sign == sign; });
  return found == separators.end() ? QStringLiteral("none") : to_qt(found->name).toLower();
}

QString capital(std::string_view words) {
  QString text = to_qt(std::string(words));
  text[0] = text[0].toUpper();
  return text;
}

QComboBox* make_choice(const char* name, const QStringList& choices) {
  QComboBox* list = make_list(false);
  list->setObjectName(to_qt(name));
  list->addItem({});  // says what was found
  list->addItems(choices);
  return list;
}

/// "ja, defekt" as words.
std::vector<std::string> words_in(const QString& line) {
  std::vector<std::string> words;
  for (const QString& word : line.split(u',', Qt::SkipEmptyParts))
    if (!word.trimmed().isEmpty()) words.push_back(from_qt(word.trimmed()));
  return words;
}

/// The sign in the times shown; empty where they are whole numbers.
QString decimal_in(const TextLook& look) {
  const auto time = std::find(look.columns.begin(), look.columns.end(), DataColumn::x);
  const auto place = static_cast<std::size_t>(time - look.columns.begin());
  for (const TextLook::Row& row : look.rows) {
    if (place >= row.fields.size()) continue;
    if (row.fields[place].find(',') != std::string::npos) return QObject::tr("comma");
    if (row.fields[place].find('.') != std::string::npos) return QObject::tr("point");
  }
  return {};
}

QTableWidgetItem* make_cell(const std::string& text) {
  constexpr qsizetype most = 200;
  auto* cell = new QTableWidgetItem(to_qt(text).left(most));
  cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  return cell;
}

}  // namespace

void ImportDialog::run(const World& world, std::unique_ptr<ImportFile> file,
                       std::function<void(int)> imported, QWidget* parent) {
  auto* dialog = new ImportDialog(world, std::move(file), std::move(imported), parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

ImportDialog::ImportDialog(const World& world, std::unique_ptr<ImportFile> file,
                           std::function<void(int)> imported, QWidget* parent)
    : QDialog(parent),
      world_(world),
      file_(std::move(file)),
      imported_(std::move(imported)),
      fields_(this) {
  setObjectName(QStringLiteral("frm_Import"));
  setWindowTitle(tr("Import %1").arg(to_qt(file_->path()).section(u'/', -1)));
  set_up_table();
  lay_out();
  look_again();
  tbl_Rows_.setFocus();
}

void ImportDialog::connect_signs() {
  connect(cbo_Separator_, &QComboBox::activated, this, [this](int at) {
    change([this, at] {
      choices_.separator = at == 0 ? '\0' : separators[static_cast<std::size_t>(at) - 1].sign;
    });
  });
  connect(cbo_Decimal_, &QComboBox::activated, this, [this](int at) {
    change([this, at] { choices_.decimal = static_cast<DecimalSign>(at); });
  });
  connect(cbo_Head_, &QComboBox::activated, this, [this](int at) {
    change([this, at] { choices_.head_line = static_cast<HeadLine>(at); });
  });
  connect(&txt_Failed_, &QLineEdit::textEdited, this, [this](const QString& line) {
    change([this, &line] { choices_.failed = words_in(line); });
  });
}

QWidget* ImportDialog::make_signs() {
  QStringList names;
  for (const Separator& each : separators) names << tr(each.name);
  cbo_Separator_ = make_choice("cbo_Separator", names);
  cbo_Decimal_ = make_choice("cbo_Decimal", {tr("Point"), tr("Comma")});
  cbo_Head_ = make_choice("cbo_Head", {tr("Yes"), tr("No")});
  txt_Failed_.setObjectName(QStringLiteral("txt_Failed"));
  txt_Failed_.setPlaceholderText(tr("the usual words: F, failed, 1, yes"));
  connect_signs();
  auto* signs = new QWidget;
  auto* grid = new QGridLayout(signs);
  grid->setContentsMargins(0, 0, 0, 0);
  const auto add = [grid](const QString& words, QWidget* field, int row, int column) {
    auto* caption = new QLabel(words);
    caption->setBuddy(field);
    grid->addWidget(caption, row, 2 * column);
    grid->addWidget(field, row, 2 * column + 1);
    grid->setColumnStretch(2 * column + 1, 1);
  };
  add(tr("&Separator"), cbo_Separator_, 0, 0);
  add(tr("&Decimal sign"), cbo_Decimal_, 0, 1);
  add(tr("&Head line"), cbo_Head_, 1, 0);
  add(tr("Status of a &failure"), &txt_Failed_, 1, 1);
  return signs;
}

void ImportDialog::set_up_table() {
  tbl_Rows_.setObjectName(QStringLiteral("tbl_Rows"));
  tbl_Rows_.setAccessibleName(tr("First rows"));
  set_table_look(tbl_Rows_);
  tbl_Rows_.setTabKeyNavigation(false);
  tbl_Rows_.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void ImportDialog::lay_out() {
  auto* inner = new QVBoxLayout(&fields_);
  inner->setContentsMargins(0, 0, 0, 0);
  inner->addWidget(make_signs());
  auto* caption = new QLabel(tr("First &rows, and what each column is:"));
  caption->setBuddy(&tbl_Rows_);
  inner->addWidget(caption);
  inner->addWidget(&tbl_Rows_, 1);
  lbl_Result_.setObjectName(QStringLiteral("lbl_Result"));
  lbl_Result_.setWordWrap(true);
  lbl_Result_.setTextFormat(Qt::PlainText);
  lbl_Result_.setMinimumHeight(lbl_Result_.fontMetrics().lineSpacing() * 2);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  cmd_Import_ = buttons->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
  cmd_Import_->setObjectName(QStringLiteral("cmd_Import"));
  // Enter never gives up what was chosen.
  for (QAbstractButton* each : buttons->buttons())
    qobject_cast<QPushButton*>(each)->setAutoDefault(false);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(&fields_, 1);
  whole->addWidget(&lbl_Result_);
  whole->addWidget(buttons);
  resize(usual_size.boundedTo(screen()->availableSize() * most_of_screen));
}

void ImportDialog::change(const std::function<void()>& choice) {
  world_.commands.run([this, &choice] {
    choice();
    look_again();
  });
}

/// What was said of the columns holds as long as these are the same.
void ImportDialog::look_again() {
  const auto shape = [this] {
    return std::tuple(preview_.look.separator, preview_.look.columns.size(),
                      preview_.look.headings);
  };
  const auto before = shape();
  preview_ = preview_import(world_.session, *file_, choices_);
  const bool is_other = shape() != before;
  if (is_other && !choices_.columns.empty()) {
    choices_.columns.clear();
    preview_ = preview_import(world_.session, *file_, choices_);
  }
  if (is_other) show_columns();
  show_found();
  show_rows();
  show_end(to_qt(words_of(*file_, preview_)), !preview_.fault);
}

/// The first choice of each list tells what stands in the text.
void ImportDialog::show_found() {
  const TextLook& look = preview_.look;
  const auto say = [](QComboBox* list, const QString& found) {
    list->setItemText(0, found.isEmpty() ? tr("By content") : tr("By content: %1").arg(found));
  };
  say(cbo_Separator_, choices_.separator == 0 ? separator_name(look.separator) : QString());
  say(cbo_Decimal_, choices_.decimal == DecimalSign::by_content ? decimal_in(look) : QString());
  say(cbo_Head_, choices_.head_line != HeadLine::by_content ? QString()
                 : look.has_head_line                       ? tr("yes")
                                                            : tr("no"));
  const auto& columns = look.columns;
  const bool has_status =
      std::find(columns.begin(), columns.end(), DataColumn::status) != columns.end() ||
      std::find(columns.begin(), columns.end(), DataColumn::censored) != columns.end();
  txt_Failed_.setEnabled(has_status || !txt_Failed_.text().isEmpty());
}

QComboBox* ImportDialog::make_column_list(std::size_t place) {
  QComboBox* list = make_list(false);
  list->setObjectName(QStringLiteral("cbo_Column_%1").arg(place));
  list->addItem(tr("(not read)"));
  for (int i = 0; i < sheet_data_columns; ++i)
    list->addItem(capital(noun_of(static_cast<DataColumn>(i))));
  const auto& column = preview_.look.columns[place];
  list->setCurrentIndex(column ? static_cast<int>(*column) + 1 : 0);
  list->setEnabled(preview_.look.separator != 0);
  connect(list, &QComboBox::activated, this, [this, place](int at) {
    change([this, place, at] {
      choices_.columns[place] =
          at == 0 ? std::nullopt : std::optional(static_cast<DataColumn>(at - 1));
    });
  });
  return list;
}

void ImportDialog::show_columns() {
  const TextLook& look = preview_.look;
  const std::size_t count = std::min(look.columns.size(), most_columns);
  tbl_Rows_.clear();
  tbl_Rows_.setColumnCount(static_cast<int>(count) + 1);
  tbl_Rows_.setRowCount(1);
  QStringList titles = {tr("Is read as")};
  QWidget* before = &tbl_Rows_;
  for (std::size_t i = 0; i < count; ++i) {
    const bool has_name = i < look.headings.size() && !look.headings[i].empty();
    titles << (has_name ? to_qt(look.headings[i]).left(60) : tr("Column %1").arg(i + 1));
    QComboBox* list = make_column_list(i);
    tbl_Rows_.setCellWidget(list_row, static_cast<int>(i) + 1, list);
    setTabOrder(before, list);
    before = list;
  }
  tbl_Rows_.setHorizontalHeaderLabels(titles);
}

void ImportDialog::show_rows() {
  const auto& rows = preview_.look.rows;
  tbl_Rows_.setRowCount(static_cast<int>(rows.size()) + 1);
  tbl_Rows_.setVerticalHeaderItem(list_row, new QTableWidgetItem(tr("Line")));
  for (std::size_t i = 0; i < rows.size(); ++i) show_row(static_cast<int>(i), rows[i]);
  tbl_Rows_.setRowHeight(list_row, fontMetrics().height() * 2);
  tbl_Rows_.resizeColumnsToContents();
}

void ImportDialog::show_row(int row, const TextLook::Row& from) {
  const auto index = static_cast<std::size_t>(row);
  const bool is_wrong = preview_.fault && preview_.fault->line == from.line;
  const int place = list_row + 1 + row;
  tbl_Rows_.setVerticalHeaderItem(place, new QTableWidgetItem(QString::number(from.line)));
  for (int column = 0; column < tbl_Rows_.columnCount(); ++column) {
    const std::size_t field = static_cast<std::size_t>(column) - 1;
    const bool is_point = column == point_column;
    const auto& texts = is_point ? preview_.points : from.fields;
    const std::size_t at = is_point ? index : field;
    QTableWidgetItem* cell = make_cell(at < texts.size() ? texts[at] : std::string());
    const bool is_read = is_point || preview_.look.columns[field].has_value();
    if (!is_read) cell->setForeground(quiet_ink(palette()));
    if (is_point) cell->setBackground(palette().alternateBase());
    if (is_wrong) cell->setBackground(wrong_ground(palette()));
    tbl_Rows_.setItem(place, column, cell);
  }
}

void ImportDialog::show_end(const QString& words, bool is_good) {
  lbl_Result_.setText(words);
  QPalette colours = palette();
  if (!is_good) colours.setColor(QPalette::WindowText, wrong_ink(palette()));
  lbl_Result_.setPalette(colours);
  cmd_Import_->setEnabled(is_good);
  cmd_Import_->setDefault(is_good);
}

void ImportDialog::set_reading(bool reading) {
  reading_ = reading;
  if (reading) show_end(tr("Reading; Escape stops it."), true);
  fields_.setEnabled(!reading);
  cmd_Import_->setEnabled(!reading);
}

void ImportDialog::accept() {
  if (reading_ || !cmd_Import_->isEnabled()) return;
  world_.commands.run([this] {
    set_reading(true);
    std::optional<ReadFault> fault;
    const int index = import_data(world_.session, *file_, choices_, fault);
    set_reading(false);
    if (index > 0) {
      imported_(index);
      return QDialog::accept();
    }
    if (fault)
      show_end(to_qt(fault->stopped ? "Stopped; nothing was read." : words_of(*fault)),
               fault->stopped);
    else
      show_end(tr("Nothing was read: the project takes no further data set."), false);
  });
}

void ImportDialog::reject() {
  if (reading_)
    world_.progress.want_stop();
  else
    QDialog::reject();
}

}  // namespace tavlo
