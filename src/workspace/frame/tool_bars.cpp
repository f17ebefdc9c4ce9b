#include "workspace/frame/tool_bars.h"

#include <QEvent>
#include <QHelpEvent>
#include <QStyle>
#include <QToolButton>
#include <QToolTip>
#include <array>

#include "workspace/frame/command_table.h"
#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

struct BarButton {
  int command;
  const char* word;
};

constexpr std::array<BarButton, 16> buttons = {{{command::new_project, "New"},
                                                {command::open, "Open"},
                                                {command::save, "Save"},
                                                {command::print, "Print"},
                                                {command::separator, ""},
                                                {command::cut, "Cut"},
                                                {command::copy, "Copy"},
                                                {command::paste, "Paste"},
                                                {command::separator, ""},
                                                {command::calculate, "Calculate"},
                                                {command::zoom, "Zoom"},
                                                {command::label_style, "Format"},
                                                {command::separator, ""},
                                                {command::fit_wizard, "Wizard"},
                                                {command::sample, "MC"},
                                                {command::compare, "Dist"}}};

/// "Save (Ctrl+S)"
QString tip_of(const QAction& action) {
  QString caption = action.text().remove(u'&');
  if (!action.shortcut().isEmpty())
    caption += QStringLiteral(" (%1)").arg(action.shortcut().toString(QKeySequence::NativeText));
  return action.isEnabled() ? caption : caption + QStringLiteral("\n") + action.toolTip();
}

}  // namespace

ToolBars::ToolBars(QMainWindow& frame, CommandRegistry& commands,
                   std::function<QString()> front_caption)
    : frame_(frame), commands_(commands), front_caption_(std::move(front_caption)) {
  for (const BarButton& each : buttons)
    if (each.command != command::separator)
      commands_.action(each.command).setIconText(QString::fromUtf8(each.word));
  const int small = frame.style()->pixelMetric(QStyle::PM_SmallIconSize);
  strip_.setToolButtonStyle(Qt::ToolButtonIconOnly);
  strip_.setIconSize(QSize(small, small) * 5 / 4);
  ribbon_.setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  ribbon_.setIconSize(QSize(small, small) * 3 / 2);
  set_up_menus();
  add_bar(strip_, "tb_Strip", tr("Toolbar (Strip)"));
  add_bar(ribbon_, "tb_Ribbon", tr("Toolbar (QM format)"));
}

void ToolBars::add_bar(QToolBar& bar, const char* name, const QString& title) {
  bar.setObjectName(QString::fromUtf8(name));
  bar.setWindowTitle(title);
  frame_.addToolBar(&bar);
  bar.installEventFilter(this);
}

/// Most people show one of the two: buttons are made when their bar is first shown.
void ToolBars::fill(QToolBar& bar) {
  add_buttons(bar);
  if (&bar != &ribbon_) return;
  add_arrow(ribbon_, command::open, menu("&File"));
  add_arrow(ribbon_, command::copy, menu("&Edit"));
  add_arrow(ribbon_, command::zoom, menu("&Options"));
  add_arrow(ribbon_, command::calculate, analysis_);
  add_arrow(ribbon_, command::sample, tools_);
  add_menu_button(tr("Window"), menu("&Window"));
  add_menu_button(tr("Help"), menu("&Help"));
}

void ToolBars::add_buttons(QToolBar& bar) {
  for (const BarButton& each : buttons) {
    if (each.command == command::separator) {
      bar.addSeparator();
      continue;
    }
    QAction& action = commands_.action(each.command);
    bar.addAction(&action);
    bar.widgetForAction(&action)->installEventFilter(this);
  }
  add_arrow(bar, command::new_project, menu("&File|&New"));
  add_arrow(bar, command::print, print_);
}

void ToolBars::set_up_menus() {
  for (QMenu* each : {&all_menus_, &analysis_, &tools_, &print_}) each->setToolTipsVisible(true);
  QMenu& methods = menu("&Analysis|&Method");
  for (QAction* entry : menu("&Analysis").actions())
    entry == methods.menuAction()
        ? analysis_.addMenu(tr("Method(rr/rrs/mle)"))->addActions(methods.actions())
        : analysis_.addAction(entry);
  tools_.addActions(menu("&Tools").actions());
  tools_.addMenu(tr("Windows"))->addActions(menu("&Window").actions());
  set_up_print_menu();
  for (const char* path : {"&File", "&Edit", "&Options"}) all_menus_.addMenu(&menu(path));
  all_menus_.addMenu(&analysis_)->setText(tr("Analysis"));
  all_menus_.addMenu(&tools_)->setText(tr("Tools"));
  for (const char* path : {"&Window", "&Help"}) all_menus_.addMenu(&menu(path));
}

/// It is headed by the window that its entries would print.
void ToolBars::set_up_print_menu() {
  connect(&print_, &QMenu::aboutToShow, this, [this] {
    print_.clear();
    print_.addSection(tr("Print/Hard/Soft/Export: ") + front_caption_());
    const auto add = [this](const QString& caption, int id) {
      QAction& action = commands_.action(id);
      QAction* entry = print_.addAction(action.icon(), caption, &action, &QAction::trigger);
      entry->setEnabled(action.isEnabled());
      entry->setToolTip(action.isEnabled() ? QString() : action.toolTip());
    };
    add(tr("Printer &Setup"), command::print_setup);
    add(tr("&Print (hardcopy)"), command::print);
    add(tr("&Copy"), command::copy);
    add(tr("&Export to File"), command::export_file);
  });
}

void ToolBars::add_arrow(QToolBar& bar, int id, QMenu& menu) {
  auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(&commands_.action(id)));
  button->setMenu(&menu);
  button->setPopupMode(QToolButton::MenuButtonPopup);
}

void ToolBars::add_menu_button(const QString& caption, QMenu& menu) {
  auto* button = new QToolButton;
  button->setText(caption);
  button->setAccessibleName(caption);
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setIcon(icon(caption == tr("Help") ? QStringLiteral("help") : QStringLiteral("doc")));
  button->setMenu(&menu);
  button->setPopupMode(QToolButton::InstantPopup);
  button->setToolTip(tr("The menu %1").arg(caption));
  ribbon_.addWidget(button);
}

bool ToolBars::eventFilter(QObject* watched, QEvent* event) {
  auto* bar = qobject_cast<QToolBar*>(watched);
  if (bar && event->type() == QEvent::Show && bar->actions().isEmpty()) fill(*bar);
  auto* button = qobject_cast<QToolButton*>(watched);
  if (!button || event->type() != QEvent::ToolTip || !button->defaultAction())
    return QObject::eventFilter(watched, event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip_of(*button->defaultAction()),
                     button);
  return true;
}

}  // namespace tavlo
