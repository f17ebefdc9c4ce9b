#include "workspace/frame/help_window.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <algorithm>

#include "workspace/qt/icons.h"
#include "workspace/qt/tones.h"

namespace tavlo {

namespace {

QUrl url_of(const QString& key) { return QUrl(QStringLiteral("%1.md").arg(key)); }

QString key_of(const QUrl& url) { return url.fileName().section(u'.', 0, 0); }

/// A button for each way through the pages.
QToolButton* make_button(const QString& key, const QString& words, const QKeySequence& keys) {
  auto* button = new QToolButton;
  button->setIcon(icon(key));
  button->setText(words);
  button->setAccessibleName(words);
  button->setShortcut(keys);
  button->setToolTip(QStringLiteral("%1 (%2)").arg(words, keys.toString(QKeySequence::NativeText)));
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

QVariant ManualBrowser::loadResource(int, const QUrl& name) {
  const auto found = std::find_if(pages_.begin(), pages_.end(),
                                  [&](const ManualPage& page) { return page.key == key_of(name); });
  return found == pages_.end() ? QVariant() : QVariant(found->text);
}

HelpWindow::HelpWindow(std::vector<ManualPage> pages) : browser_(std::move(pages)) {
  setObjectName(QStringLiteral("frm_Help"));
  setWindowTitle(tr("Tavlo Help"));
  setWindowIcon(icon(QStringLiteral("tavlo")));
  setAttribute(Qt::WA_QuitOnClose, false);
  for (const ManualPage& each : browser_.pages()) contents_.addItem(each.title);
  contents_.setAccessibleName(tr("Contents"));
  browser_.setAccessibleName(tr("Page"));
  browser_.setOpenExternalLinks(true);
  lay_out();
  connect(&contents_, &QListWidget::currentRowChanged, this, &HelpWindow::open);
  connect(&browser_, &QTextBrowser::sourceChanged, this, &HelpWindow::follow_page);
  connect(&words_, &QLineEdit::textChanged, this, &HelpWindow::search);
  connect(&words_, &QLineEdit::returnPressed, this, [this] { go_on(true); });
  auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, &words_, [this] {
    words_.setFocus();
    words_.selectAll();
  });
}

QLayout* HelpWindow::make_top() {
  auto* row = new QHBoxLayout;
  auto* back = make_button(QStringLiteral("back"), tr("Back"), QKeySequence::Back);
  auto* forward = make_button(QStringLiteral("forward"), tr("Forward"), QKeySequence::Forward);
  auto* next = make_button(QStringLiteral("find"), tr("Next place"), QKeySequence(Qt::Key_F3));
  auto* previous =
      make_button(QStringLiteral("back"), tr("Place before"), QKeySequence(Qt::SHIFT | Qt::Key_F3));
  connect(back, &QToolButton::clicked, &browser_, &QTextBrowser::backward);
  connect(forward, &QToolButton::clicked, &browser_, &QTextBrowser::forward);
  connect(&browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(&browser_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  connect(next, &QToolButton::clicked, this, [this] { go_on(true); });
  connect(previous, &QToolButton::clicked, this, [this] { go_on(false); });
  words_.setObjectName(QStringLiteral("txt_Search"));
  words_.setPlaceholderText(tr("Search the manual (Ctrl+F)"));
  words_.setAccessibleName(tr("Search the manual"));
  words_.setClearButtonEnabled(true);
  found_.setObjectName(QStringLiteral("lbl_Found"));
  for (QWidget* each :
       std::initializer_list<QWidget*>{back, forward, &words_, previous, next, &found_})
    row->addWidget(each, each == &words_ ? 1 : 0);
  return row;
}

void HelpWindow::lay_out() {
  auto* halves = new QSplitter;
  halves->addWidget(&contents_);
  halves->addWidget(&browser_);
  const int letter = fontMetrics().averageCharWidth();
  halves->setSizes({letter * 26, letter * 94});
  halves->setStretchFactor(1, 1);
  browser_.document()->setDocumentMargin(letter * 2);
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(make_top());
  rows->addWidget(halves, 1);
  resize(
      QSize(letter * 124, fontMetrics().height() * 42).boundedTo(screen()->availableSize() * 0.9));
}

void HelpWindow::show_page(const QString& key) {
  browser_.setSource(url_of(key));
  if (page() < 0) browser_.setSource(url_of(QStringLiteral("contents")));
  isMinimized() ? showNormal() : show();
  raise();
  activateWindow();
  browser_.setFocus();
}

int HelpWindow::page() const { return row_of(browser_.source()); }

int HelpWindow::row_of(const QUrl& url) const {
  const auto& pages = browser_.pages();
  const auto found = std::find_if(pages.begin(), pages.end(), [&url](const ManualPage& page) {
    return page.key == key_of(url);
  });
  return found == pages.end() ? -1 : static_cast<int>(found - pages.begin());
}

void HelpWindow::open(int row) {
  if (row >= 0 && row != page())
    browser_.setSource(url_of(browser_.pages()[static_cast<std::size_t>(row)].key));
}

// The browser tells of a page before it calls it its source.
void HelpWindow::follow_page(const QUrl& url) {
  const QSignalBlocker quiet(contents_);
  contents_.setCurrentRow(row_of(url));
  contents_.scrollToItem(contents_.currentItem());
  mark_found();
}

/// Grey contents have nothing of it; the page at hand goes to the first place.
void HelpWindow::search() {
  const QString words = words_.text();
  int count = 0;
  for (int i = 0; i < contents_.count(); ++i) {
    const bool has = has_words(browser_.pages()[static_cast<std::size_t>(i)], words);
    count += has ? 1 : 0;
    contents_.item(i)->setForeground(has ? palette().color(QPalette::Text) : quiet_ink(palette()));
  }
  found_.setText(words.isEmpty() ? QString()
                 : count == 0    ? tr("not found")
                                 : tr("on %n page(s)", nullptr, count));
  mark_found();
  browser_.moveCursor(QTextCursor::Start);
  if (!words.isEmpty()) browser_.find(words);
}

/// The next place on this page, else on the next page that has the words.
void HelpWindow::go_on(bool forward) {
  const QString words = words_.text();
  const auto way = forward ? QTextDocument::FindFlags() : QTextDocument::FindBackward;
  if (words.isEmpty() || browser_.find(words, way)) return;
  const int count = contents_.count();
  for (int step = 1; step <= count; ++step) {
    const int row = (page() + (forward ? step : count - step)) % count;
    if (!has_words(browser_.pages()[static_cast<std::size_t>(row)], words)) continue;
    open(row);
    browser_.moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
    if (browser_.find(words, way)) return;
  }
}

void HelpWindow::mark_found() {
  QList<QTextEdit::ExtraSelection> marks;
  QTextCursor at(browser_.document());
  while (!words_.text().isEmpty()) {
    at = browser_.document()->find(words_.text(), at);
    if (at.isNull()) break;
    QTextEdit::ExtraSelection mark{at, {}};
    mark.format.setBackground(QColor(0xFF, 0xE0, 0x66));
    mark.format.setForeground(Qt::black);
    marks.append(mark);
  }
  browser_.setExtraSelections(marks);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  event->key() == Qt::Key_Escape ? static_cast<void>(close()) : QWidget::keyPressEvent(event);
}

}  // namespace tavlo
