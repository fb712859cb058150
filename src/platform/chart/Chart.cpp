#include "platform/chart/Chart.h"
#include "common/Convert.h"
#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr size_t kLargest = 25;

/// The labels' places from the largest value down, equal ones as they came.
std::vector<size_t> ranking(const std::vector<double>& values) {
    std::vector<size_t> order(values.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return values[a] > values[b]; });
    return order;
}

} // namespace

Chart Chart::arranged() const {
    Q_ASSERT(std::all_of(series.begin(), series.end(),
                         [this](const Series& one) { return one.values.size() == size_t(labels.size()); }));
    if (kind != Ranked || isEmpty())
        return *this;
    const std::vector<size_t> order = ranking(series.front().values);
    // One alone is rather shown than called the others.
    const size_t shown = order.size() > kLargest + 1 ? kLargest : order.size();
    Chart result = *this;
    result.labels.clear();
    for (size_t place = 0; place < shown; ++place)
        result.labels << labels[qsizetype(order[place])];
    result.summedUp = order.size() - shown;
    if (result.summedUp > 0)
        result.labels << u"Übrige (%1)"_s.arg(result.summedUp);
    for (size_t number = 0; number < series.size(); ++number) {
        std::vector<double>& values = result.series[number].values;
        values.clear();
        double rest = 0;
        for (size_t place = 0; place < order.size(); ++place) {
            const double one = value(number, order[place]);
            place < shown ? values.push_back(one) : void(rest += one);
        }
        if (result.summedUp > 0)
            values.push_back(rest);
    }
    return result;
}

QString Chart::valueText(double value) const {
    const QString number = common::formatNumber(value, form);
    return unit.isEmpty() ? number : number + u' ' + unit;
}

QString Chart::note(size_t number, size_t index) const {
    const QString& name = series[number].name;
    const QString text = valueText(value(number, index));
    return labels[qsizetype(index)] + u'\n' + (name.isEmpty() ? text : name + u": "_s + text);
}

} // namespace platform
