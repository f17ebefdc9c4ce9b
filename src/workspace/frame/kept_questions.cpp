#include "workspace/frame/kept_questions.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace tavlo {

namespace {

constexpr QLatin1String percents_key{"life/percents"};
constexpr QLatin1String times_key{"life/times"};

QStringList listed(const std::vector<double>& values) {
  QStringList texts;
  for (const double value : values)
    texts << QString::number(value, 'g', QLocale::FloatingPointShortest);
  return texts;
}

template <class IsSensible>
std::vector<double> read(const QSettings& store, QLatin1String key, IsSensible is_sensible) {
  constexpr qsizetype most = 100;
  std::vector<double> values;
  for (const QString& each : store.value(key).toStringList().mid(0, most)) {
    bool is_number = false;
    const double value = each.toDouble(&is_number);
    if (is_number && is_sensible(value)) values.push_back(value);
  }
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
  return values;
}

}  // namespace

void keep_questions(QSettings& store, const LifeQuestions& questions) {
  store.setValue(percents_key, listed(questions.percents));
  store.setValue(times_key, listed(questions.times));
}

LifeQuestions kept_questions(const QSettings& store) {
  if (!store.contains(percents_key)) return {};
  return {read(store, percents_key, [](double p) { return p > 0 && p < 100; }),
          read(store, times_key, [](double x) { return std::isfinite(x); })};
}

}  // namespace tavlo
