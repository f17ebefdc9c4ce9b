#include "workspace/qt/look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QHeaderView>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>
#include <QTableView>

#include "workspace/qt/icons.h"

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

}  // namespace

void set_look(QApplication& application) {
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setPalette(program_colours());
  QApplication::setFont(program_font());
  application.setWindowIcon(icon(QStringLiteral("tavlo")));
}

void set_table_look(QTableView& table) {
  QPalette colours = table.palette();
  colours.setColor(QPalette::Highlight, QColor(0xCF, 0xE1, 0xF5));
  colours.setColor(QPalette::HighlightedText, colours.color(QPalette::Text));
  table.setPalette(colours);
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
