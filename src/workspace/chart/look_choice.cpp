#include "workspace/chart/look_choice.h"

#include <QLabel>

#include "project/chart_types.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

LookChoice::LookChoice(ChartWindow& chart, UserCommands& commands)
    : QObject(&chart), chart_(chart), group_(this), menu_(tr("Loo&k")) {
  // A chart of another type, or of a profile, has none of them.
  group_.setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
  menu_.setObjectName(QStringLiteral("mnu_Look"));
  for (const char* const look : chart_looks()) add(look, commands);
  connect(&chart, &ChartWindow::state_changed, this, &LookChoice::show_state);
  show_state();
}

void LookChoice::add(const char* look, UserCommands& commands) {
  const QString name = to_qt(look);
  QAction* const entry = menu_.addAction(QLatin1Char('&') + name);
  entry->setIconText(name);
  entry->setObjectName(QStringLiteral("mnu_Look_") + name);
  entry->setData(name);
  entry->setCheckable(true);
  entry->setToolTip(tr("Shows this chart, and new charts, in the look \"%1\"").arg(name));
  group_.addAction(entry);
  connect(entry, &QAction::triggered, &chart_, commands.slot([this, look] {
    chart_.set_look(look);
    show_state();
  }));
}

QToolBar* LookChoice::make_bar(QWidget* parent) {
  auto* bar = new QToolBar(tr("Look of the chart"), parent);
  bar->setObjectName(QStringLiteral("bar_Look"));
  bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
  bar->addWidget(new QLabel(tr(" Look: ")));
  bar->addActions(group_.actions());
  return bar;
}

void LookChoice::show_state() {
  const QString look = to_qt(chart_.stage().chart().Profile);
  for (QAction* const entry : group_.actions()) entry->setChecked(entry->data().toString() == look);
}

}  // namespace tavlo
