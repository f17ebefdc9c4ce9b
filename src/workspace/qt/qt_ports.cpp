#include "workspace/qt/qt_ports.h"

#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QMimeData>
#include <QRegularExpression>
#include <span>

#include "numerics/decimal_separators.h"
#include "project/size_limits.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/x_clipboard.h"

namespace tavlo {

namespace {

QMessageBox::Icon icon_of(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::none: return QMessageBox::NoIcon;
    case BoxIcon::information: return QMessageBox::Information;
    case BoxIcon::question: return QMessageBox::Question;
    case BoxIcon::exclamation: return QMessageBox::Warning;
    case BoxIcon::stop: return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttons_of(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::ok: return QMessageBox::Ok;
    case BoxButtons::ok_cancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case BoxButtons::yes_no: return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::yes_no_cancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case BoxButtons::retry_cancel: return QMessageBox::Retry | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

BoxAnswer answer_of(int button) {
  switch (button) {
    case QMessageBox::Ok: return BoxAnswer::ok;
    case QMessageBox::Yes: return BoxAnswer::yes;
    case QMessageBox::No: return BoxAnswer::no;
    case QMessageBox::Retry: return BoxAnswer::retry;
    default: return BoxAnswer::cancel;
  }
}

/// "All (*.*)|*.*|Text (*.txt)|*.txt" as a list of Qt's filters. Qt would take the "*" behind
/// the full stop for an extension, give it to the name, and hide files without a full stop.
QStringList filters_of(const std::string& filter) {
  QStringList filters;
  QStringList parts = to_qt(filter).split(u'|');
  parts.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString name = parts[i].section(u'(', 0, 0).trimmed();
    filters << QStringLiteral("%1 (%2)").arg(name, QString(parts[i + 1]).replace(u';', u' '));
  }
  return filters;
}

/// The extension of a filter as "Metafile (*.wmf)"; empty for "All (*.*)".
QString extension_of(const QString& filter) {
  const QString first = filter.section(QStringLiteral("*."), 1).section(u' ', 0, 0).remove(u')');
  return first == QStringLiteral("*") ? QString() : first;
}

/// The toolkit completes only names without a full stop: "pumps 1.5" has no extension either.
/// A name is complete that ends in an extension of any kind of file that is offered; of the
/// kind that has `own_suffix`, only with that.
QString completed_name(const QString& name, const QFileDialog& dialog, const QString& own_suffix) {
  const QString chosen = dialog.selectedNameFilter();
  const QString own = extension_of(chosen);
  const QStringList kinds = own == own_suffix ? QStringList(chosen) : dialog.nameFilters();
  const bool is_left = own.isEmpty() || !name.section(u'/', -1).contains(u'.');
  if (is_left || QFileInfo(dialog.directory(), name).isDir()) return name;
  static const QRegularExpression any_extension(QStringLiteral("\\*(\\.[^ ;)*]+)"));
  for (const QString& filter : kinds)
    for (auto each = any_extension.globalMatch(filter); each.hasNext();)
      if (name.endsWith(each.next().captured(1), Qt::CaseInsensitive)) return name;
  return name + (name.endsWith(u'.') ? own : u'.' + own);
}

/// Completes the name that was typed before the dialog asks whether to replace an old file.
class NameDialog : public QFileDialog {
 public:
  NameDialog(QWidget* parent, const FileRequest& request)
      : QFileDialog(parent, to_qt(request.title)), own_suffix_(to_qt(request.own_suffix)) {}

  void accept() override {
    auto* const typed = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (typed && acceptMode() == AcceptSave)
      typed->setText(completed_name(typed->text(), *this, own_suffix_));
    QFileDialog::accept();
  }

 private:
  QString own_suffix_;
};

/// A name without an extension gets that of the chosen kind of file: here, before
/// the dialog asks whether to replace an old one. A desktop's own dialog would not: what
/// is saved, and in which form, must not depend on the desktop.
void prepare_saving(QFileDialog& dialog, const FileRequest& request) {
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.ask_before_replacing);
  const QString otherwise = to_qt(request.default_suffix);
  const auto complete = [&dialog, otherwise](const QString& filter) {
    const QString own = extension_of(filter);
    dialog.setDefaultSuffix(own.isEmpty() ? otherwise : own);
  };
  complete(dialog.selectedNameFilter());
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, complete);
}

/// Rich text goes under both names: editors ask for either.
constexpr const char* rtf_names[] = {"text/rtf", "application/rtf"};

/// Names of plain text, in the order in which the toolkit takes them.
constexpr const char* plain_names[] = {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain",
                                       "STRING", "TEXT"};

/// What this program has put there itself is in its memory already.
bool exceeds_limit(std::span<const char* const> names) {
  return QGuiApplication::platformName() == QStringLiteral("xcb") &&
         !QGuiApplication::clipboard()->ownsClipboard() &&
         x_clipboard_exceeds(names, largest_pasted_text);
}

/// A box is only as wide as its text, and a title cut short says nothing.
void widen_to_title(QMessageBox& window) {
  constexpr int icon_and_buttons = 120;
  auto* grid = qobject_cast<QGridLayout*>(window.layout());
  if (!grid) return;
  const int width = window.fontMetrics().horizontalAdvance(window.windowTitle());
  grid->addItem(new QSpacerItem(width * 5 / 4 + icon_and_buttons, 0), grid->rowCount(), 0, 1,
                grid->columnCount());
}

}  // namespace

std::string system_grouped_number() {
  return from_qt(QLocale::system().toString(1234.567, 'f', 2));
}

std::string system_half() { return from_qt(QLocale::system().toString(-0.5, 'f', 1)); }

NumberPunctuation system_punctuation() {
  return GetDecimalSeparators(system_grouped_number(), system_half(), [] { return std::nullopt; });
}

// A box over a dialog belongs to the dialog, or the window manager would hand the
// keyboard to the frame behind both when the box closes.
QWidget* QtPrompts::owner() const {
  QWidget* const dialog = QApplication::activeModalWidget();
  return dialog ? dialog : parent_.data();
}

BoxAnswer QtPrompts::show(const Box& box) {
  if (!folding_.continues(box)) end_command();
  return folding_.wants_showing(box) ? show_now(box) : BoxAnswer::ok;
}

void QtPrompts::end_command() {
  if (const auto rest = folding_.end_run()) show_now(*rest);
}

BoxAnswer QtPrompts::show_now(const Box& box) {
  QMessageBox window(icon_of(box.icon), to_qt(box.title.empty() ? "Tavlo" : box.title),
                     to_qt(box.text), buttons_of(box.buttons), owner());
  window.setObjectName(QStringLiteral("box"));
  window.setTextFormat(Qt::PlainText);
  window.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  if (box.buttons == BoxButtons::yes_no) window.setDefaultButton(QMessageBox::No);
  widen_to_title(window);
  return answer_of(window.exec());
}

std::optional<std::string> QtPrompts::ask_line(const std::string& title, const std::string& text,
                                               const std::string& suggestion) {
  bool accepted = false;
  const QString line = QInputDialog::getText(owner(), to_qt(title), to_qt(text), QLineEdit::Normal,
                                             to_qt(suggestion), &accepted);
  if (!accepted) return std::nullopt;
  return from_qt(line);
}

std::optional<std::string> QtPrompts::choose_file(const FileRequest& request) {
  NameDialog dialog(owner(), request);
  const QStringList filters = filters_of(request.filter);
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(request.filter_index - 1));
  if (request.saving) prepare_saving(dialog, request);
  dialog.setFileMode(request.saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (!request.suggestion.empty()) dialog.selectFile(to_qt(request.suggestion));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return from_qt(dialog.selectedFiles().value(0));
}

void QtEventLoop::yield() {
  constexpr unsigned calls_between_looks = 4;
  constexpr qint64 milliseconds_between_turns = 15;
  if (++calls_ % calls_between_looks != 0) return;
  if (since_last_turn_.elapsed() < milliseconds_between_turns) return;
  QCoreApplication::processEvents();
  since_last_turn_.restart();
}

std::string QtClipboard::text() { return from_qt(QGuiApplication::clipboard()->text()); }

bool QtClipboard::is_too_long() { return exceeds_limit(plain_names); }

ClipboardText QtClipboard::rich_text() {
  constexpr const char* html_names[] = {"text/html"};
  ClipboardText found;
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  if (!data) return found;
  if (!is_too_long()) found.plain = text();
  for (const char* const name : rtf_names)
    if (found.rtf.empty() && data->hasFormat(QString::fromLatin1(name)) &&
        !exceeds_limit({&name, 1}))
      found.rtf = data->data(QString::fromLatin1(name)).toStdString();
  if (data->hasHtml() && !exceeds_limit(html_names)) found.html = from_qt(data->html());
  return found;
}

void QtClipboard::set_text(const ClipboardText& text) {
  auto* data = new QMimeData;
  data->setText(to_qt(text.plain));
  if (!text.html.empty()) data->setHtml(to_qt(text.html));
  if (!text.rtf.empty())
    for (const char* const name : rtf_names)
      data->setData(QString::fromLatin1(name), QByteArray::fromStdString(text.rtf));
  QGuiApplication::clipboard()->setMimeData(data);
}

bool QtClipboard::holds_only_picture() {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  return data && !data->hasText() && data->hasImage();
}

bool QtClipboard::set_picture(const std::vector<ClipboardForm>& forms) {
  auto* data = new QMimeData;
  for (const ClipboardForm& form : forms)
    data->setData(to_qt(form.mime_type), QByteArray::fromStdString(form.bytes));
  QClipboard* const clipboard = QGuiApplication::clipboard();
  clipboard->setMimeData(data);
  return clipboard->ownsClipboard();
}

}  // namespace tavlo
