#include "workspace/qt/look.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QHeaderView>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>
#include <QStyledItemDelegate>
#include <QTableView>

#include "workspace/qt/icons.h"
#include "workspace/qt/tones.h"

namespace tavlo {

namespace {

/// Liberation Sans has the widths of Arial, in which charts are composed; other
/// faces only stand in for it.
QFont program_font() {
  const QStringList installed = QFontDatabase::families();
  for (const QString& face : {QStringLiteral("Liberation Sans"), QStringLiteral("Arial")})
    if (installed.contains(face)) return QFont(face, 10);
  return QFont(QApplication::font().family(), 10);
}

QPalette program_colours() {
  const QColor text(0x1F, 0x29, 0x33);
  const QColor panel(0xF1, 0xF3, 0xF6);
  const QColor accent(0x1F, 0x5F, 0xA8);
  QPalette colours(panel);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    colours.setColor(role, text);
  colours.setColor(QPalette::Base, Qt::white);
  colours.setColor(QPalette::AlternateBase, QColor(0xF7, 0xF8, 0xFA));
  colours.setColor(QPalette::Mid, QColor(0xC9, 0xCF, 0xD6));
  colours.setColor(QPalette::Highlight, accent);
  colours.setColor(QPalette::HighlightedText, Qt::white);
  colours.setColor(QPalette::ToolTipBase, Qt::white);
  colours.setColor(QPalette::ToolTipText, text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    colours.setColor(QPalette::Disabled, role, QColor(0x93, 0x9B, 0xA5));
  return colours;
}

/// A desktop names itself; a bare X server has no colours and fonts to follow. Who starts the
/// program with a style or a platform theme has chosen them too.
bool desktop_has_look() {
  for (const char* name : {"XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "GNOME_DESKTOP_SESSION_ID",
                           "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE"})
    if (!qEnvironmentVariableIsEmpty(name)) return true;
  return false;
}

/// Keeps the selection of a table readable through a change of the palette.
class TableTones : public QObject {
 public:
  explicit TableTones(QTableView& table) : QObject(&table), table_(table) {
    table.installEventFilter(this);
    take();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::PaletteChange)
      take();
    return false;
  }

 private:
  void take() {
    const QPalette program = QApplication::palette();
    const QColor ground = soft_highlight(program);
    const bool is_full = ground == program.color(QPalette::Highlight);
    QPalette colours = table_.palette();
    const QColor ink = program.color(is_full ? QPalette::HighlightedText : QPalette::Text);
    if (colours.color(QPalette::Highlight) == ground &&
        colours.color(QPalette::HighlightedText) == ink)
      return;
    colours.setColor(QPalette::Highlight, ground);
    colours.setColor(QPalette::HighlightedText, ink);
    table_.setPalette(colours);
  }

  QTableView& table_;
};

/// A cell's own colour tells something of it, selected or not.
class CellInk : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const QVariant ink = index.data(Qt::ForegroundRole);
    const QPalette program = QApplication::palette();
    if (ink.isValid() && soft_highlight(program) != program.color(QPalette::Highlight))
      option->palette.setBrush(QPalette::HighlightedText, ink.value<QBrush>());
  }
};

}  // namespace

void set_look(QApplication& application) {
  if (!desktop_has_look()) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(program_colours());
    QApplication::setFont(program_font());
  }
  make_prompts_readable();
  application.setWindowIcon(icon(QStringLiteral("tavlo")));
}

void make_prompts_readable() {
  const QPalette now = QApplication::palette();
  const QColor ink = quiet_ink(now);
  if (now.color(QPalette::PlaceholderText) == ink) return;
  QPalette prompts = now;
  prompts.setColor(QPalette::PlaceholderText, ink);
  QApplication::setPalette(prompts);
}

void set_table_look(QTableView& table) {
  new TableTones(table);
  table.setItemDelegate(new CellInk(&table));
  table.setWordWrap(false);
  table.setEditTriggers(QAbstractItemView::NoEditTriggers);
  table.setSelectionMode(QAbstractItemView::ContiguousSelection);
  table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 6);
  table.horizontalHeader()->setHighlightSections(false);
}

void show_fitting(QWidget& window) {
  constexpr double share_of_screen = 0.8;
  const QSize room = window.screen()->availableSize();
  const QSize usual = QSize(1280, 800).expandedTo(room * share_of_screen);
  window.resize(usual);
  // A window of the screen's own size would hide its lower edge behind its title.
  const bool fits = room.width() > usual.width() && room.height() > usual.height() + 40;
  fits ? window.show() : window.showMaximized();
}

}  // namespace tavlo
