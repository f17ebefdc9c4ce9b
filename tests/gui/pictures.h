// Pictures: what a window looks like, kept for people to look at, and what no picture of a
// window may show: a control that has no name or whose words are cut.
#pragma once

#include <QString>
#include <QWidget>

namespace tavlo::test {

/// The controls that have the keyboard and no name for screen readers; empty for none.
QString nameless_in(const QWidget& window);

/// Buttons, lists and labels that are smaller than their words, or that nobody can scroll into
/// view.
QString cut_in(const QWidget& window);

/// Kept in the folder that the environment names as TAVLO_PICTURES.
void keep_picture(QWidget& window, const QString& name);

}  // namespace tavlo::test
