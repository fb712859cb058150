#include "platform/chart/ChartPicture.h"
#include "common/Convert.h"
#include "platform/form/Contrast.h"
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QFontInfo>
#include <QHorizontalBarSeries>
#include <QLegend>
#include <QLineF>
#include <QLineSeries>
#include <QPainter>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// A name takes no more of a ranked picture's width than that.
constexpr double kNamePart = 0.35;

/// The hue, lighter or darker, so that it stands out from the ground about as far as wanted.
QColor standingOut(const QColor& hue, const QColor& ground, double wanted) {
    const bool darkGround = contrast(ground, Qt::white) > contrast(ground, Qt::black);
    QColor best = hue;
    double missed = HUGE_VAL;
    for (int step = -50; step <= 50; ++step) {
        const QColor color = mixed(hue, step < 0 ? Qt::black : Qt::white, std::abs(step) / 50.0);
        const bool lighter = contrast(color, Qt::black) > contrast(ground, Qt::black);
        const double miss = std::abs(std::log(contrast(color, ground) / wanted));
        if (lighter == darkGround && miss < missed) {
            best = color;
            missed = miss;
        }
    }
    return best;
}

ChartLook lookOn(const QColor& ground, const QColor& ink, const QColor& quiet, const QFont& font) {
    const QColor blue(0x2f, 0x6f, 0xb0), orange(0xe0, 0x90, 0x2c);
    return {ground,
            ink,
            quiet,
            mixed(ground, ink, 0.16),
            {standingOut(blue, ground, 9.5), standingOut(orange, ground, 3.2)},
            font};
}

QFont resized(QFont font, double part) {
    font.setPixelSize(qMax(1, qRound(font.pixelSize() * part)));
    return font;
}

QFont titleFont(const QFont& font) {
    QFont title = resized(font, 1.3);
    title.setBold(true);
    return title;
}

double widest(const QFont& font, const QStringList& texts) {
    const QFontMetricsF metrics(font);
    double width = 0;
    for (const QString& text : texts)
        width = qMax(width, metrics.horizontalAdvance(text));
    return width;
}

/// The next round number: 1, 2 or 5 with zeros.
double roundStep(double atLeast) {
    const double power = std::pow(10, std::floor(std::log10(atLeast)));
    for (const double part : {1.0, 2.0, 5.0})
        if (part * power >= atLeast * (1 - 1e-9))
            return part * power;
    return 10 * power;
}

} // namespace

ChartLook ChartLook::onScreen(const QPalette& palette, const QFont& font) {
    const QColor ground = palette.color(QPalette::Active, QPalette::Base);
    QFont sized = font;
    sized.setPixelSize(QFontInfo(font).pixelSize());
    return lookOn(ground, palette.color(QPalette::Active, QPalette::Text), quietInk(palette, ground), sized);
}

ChartLook ChartLook::onPaper() {
    QFont font;
    font.setFamilies({u"Liberation Sans"_s, u"Arial"_s, u"Helvetica"_s});
    font.setPixelSize(13);
    return lookOn(Qt::white, Qt::black, QColor(0x50, 0x50, 0x50), font);
}

ChartPicture::ChartPicture(Chart chart, ChartLook look, QSizeF size) :
    m_chart(std::move(chart)), m_look(std::move(look)), m_size(size),
    m_scene(std::make_unique<QGraphicsScene>()) {
    layOut();
    build();
}

double ChartPicture::slot() const {
    return (isRanked() ? m_plot.height() : m_plot.width()) / double(count());
}

/// What the bars take of the room for their label.
double ChartPicture::barPart() const {
    constexpr double kWidest = 0.8;
    const double thickest = QFontMetricsF(m_look.font).height() * (isRanked() ? 2.5 : 7);
    return qMin(kWidest, thickest * double(m_chart.series.size()) / slot());
}

/// The bar of those that were summed up would dwarf all others: it is told by its number only.
double ChartPicture::drawn(ChartPlace place) const {
    const bool isRest = m_chart.summedUp > 0 && place.index == count() - 1;
    return isRest ? 0 : m_chart.value(place.series, place.index);
}

double ChartPicture::valuePosition(double value) const {
    const double part = (value - m_scale.low) / (m_scale.high - m_scale.low);
    return isRanked() ? m_plot.left() + part * m_plot.width() : m_plot.bottom() - part * m_plot.height();
}

/// As few decimals as the step needs.
QString ChartPicture::axisText(double value) const {
    const int decimals = m_scale.step >= 1 ? 0 : int(std::ceil(-std::log10(m_scale.step) - 1e-9));
    return common::formatNumber(value, decimals ? u"#,0."_s + QString(decimals, u'0') : u"#,0"_s);
}

std::vector<double> ChartPicture::ticks() const {
    std::vector<double> result;
    const int steps = qRound((m_scale.high - m_scale.low) / m_scale.step);
    for (int i = 0; i <= steps; ++i)
        result.push_back(m_scale.low + i * m_scale.step);
    return result;
}

ChartPicture::Scale ChartPicture::scaleFor(double length) const {
    double low = 0, high = 0;
    for (size_t series = 0; series < m_chart.series.size(); ++series)
        for (size_t index = 0; index < count(); ++index) {
            low = qMin(low, drawn({series, index}));
            high = qMax(high, drawn({series, index}));
        }
    if (low == high)
        return {};
    const QFontMetricsF metrics(m_look.font);
    const double room =
        isRanked() ? widest(m_look.font, {m_chart.valueText(low), m_chart.valueText(high)}) + metrics.height()
                   : metrics.height() * 2.5;
    const double steps = std::clamp(std::floor(length / room), 1.0, 10.0);
    double step = roundStep((high - low) / steps);
    // Nobody counts half orders.
    if (!common::formatNumber(1, m_chart.form).contains(u'.'))
        step = qMax(1.0, step);
    return {std::floor(low / step + 1e-9) * step, std::ceil(high / step - 1e-9) * step, step};
}

void ChartPicture::layOut() {
    const QFontMetricsF metrics(m_look.font);
    const double line = metrics.height(), gap = line / 2;
    const QRectF inside = QRectF(QPointF(), m_size).adjusted(gap, gap, -gap, -gap);
    m_title = QFontMetricsF(titleFont(m_look.font)).boundingRect(inside, Qt::TextWordWrap, m_chart.title);
    m_title = {inside.left(), inside.top(), inside.width(), m_chart.title.isEmpty() ? 0 : m_title.height()};
    m_headLine = {inside.left(), m_title.bottom() + gap / 2, inside.width(),
                  m_chart.unit.isEmpty() && m_chart.series.size() < 2 ? 0 : line};
    m_plot = inside;
    m_plot.setTop(m_headLine.bottom() + line * 0.8);
    m_plot.setBottom(inside.bottom() - line - gap);
    if (isRanked()) {
        const double names = qMin(widest(m_look.font, m_chart.labels), m_size.width() * kNamePart);
        m_plot.setLeft(inside.left() + names + gap);
        m_tellsValues = valuesFit();
        m_plot.setRight(inside.right() - (m_tellsValues ? valueRoom() + gap : line));
        m_scale = scaleFor(m_plot.width());
    } else {
        m_scale = scaleFor(m_plot.height());
        QStringList texts;
        for (const double tick : ticks())
            texts << axisText(tick);
        m_plot.setLeft(inside.left() + widest(m_look.font, texts) + gap);
        m_tellsValues = valuesFit();
        if (m_tellsValues)
            m_plot.setTop(m_plot.top() + line);
    }
    m_plot.setSize(m_plot.size().expandedTo({1, 1}));
}

/// How wide the widest value is.
double ChartPicture::valueRoom() const {
    QStringList texts;
    for (const Chart::Series& series : m_chart.series)
        for (const double value : series.values)
            texts << common::formatNumber(value, m_chart.form);
    return widest(m_look.font, texts);
}

/// Whether each bar has room for its value: on paper nobody can ask for it.
bool ChartPicture::valuesFit() const {
    constexpr size_t kFew = 60;
    const size_t bars = count() * m_chart.series.size();
    if (m_chart.kind == Chart::Line || bars > kFew)
        return false;
    const double bar = slot() * (m_chart.series.size() > 1 ? barPart() : 1.0) / double(m_chart.series.size());
    const QFontMetricsF metrics(m_look.font);
    return isRanked() ? bar >= metrics.ascent() : bar >= valueRoom() + metrics.averageCharWidth();
}

QPen ChartPicture::outline(size_t series) const {
    constexpr double kThick = 6;
    const double bar = slot() * barPart() / double(m_chart.series.size());
    return series == 1 && bar > kThick ? QPen(m_look.ink, 1) : QPen(Qt::NoPen);
}

void ChartPicture::build() {
    const QRectF all(QPointF(), m_size);
    auto* chart = new QChart;
    m_scene->addItem(chart);
    m_scene->setSceneRect(all);
    chart->setAnimationOptions(QChart::NoAnimation);
    chart->setBackgroundVisible(false);
    chart->legend()->hide();
    chart->setMargins({});
    auto* values = new QValueAxis;
    values->setRange(m_scale.low, m_scale.high);
    QAbstractAxis* labels = nullptr;
    if (m_chart.kind == Chart::Line) {
        auto* places = new QValueAxis;
        places->setRange(-0.5, double(count()) - 0.5);
        labels = places;
    } else {
        auto* places = new QBarCategoryAxis;
        for (size_t index = 0; index < count(); ++index)
            places->append(QString::number(index));
        labels = places;
    }
    chart->addAxis(values, isRanked() ? Qt::AlignBottom : Qt::AlignLeft);
    chart->addAxis(labels, isRanked() ? Qt::AlignLeft : Qt::AlignBottom);
    std::vector<QAbstractSeries*> shown;
    if (m_chart.kind == Chart::Line) {
        for (size_t number = 0; number < m_chart.series.size(); ++number) {
            auto* line = new QLineSeries;
            for (size_t index = 0; index < count(); ++index)
                line->append(double(index), m_chart.value(number, index));
            shown.push_back(line);
        }
    } else {
        auto* bars = isRanked() ? static_cast<QAbstractBarSeries*>(new QHorizontalBarSeries) : new QBarSeries;
        addBars(*bars);
        shown.push_back(bars);
    }
    for (size_t number = 0; number < shown.size(); ++number) {
        chart->addSeries(shown[number]);
        shown[number]->attachAxis(values);
        shown[number]->attachAxis(labels);
        // Adding gives them the colours of a theme.
        if (auto* line = qobject_cast<QLineSeries*>(shown[number]))
            line->setPen(QPen(m_look.fills[number], 2, number == 0 ? Qt::SolidLine : Qt::DashLine));
        else
            dressBars(*static_cast<QAbstractBarSeries*>(shown[number]));
    }
    values->setVisible(false);
    labels->setVisible(false);
    chart->resize(m_size);
    chart->setPlotArea(m_plot);
}

/// The toolkit lays ranked bars from the bottom upwards.
void ChartPicture::addBars(QAbstractBarSeries& bars) const {
    const size_t number = m_chart.series.size();
    bars.setBarWidth(barPart());
    for (size_t i = 0; i < number; ++i) {
        const size_t series = isRanked() ? number - 1 - i : i;
        auto* set = new QBarSet(m_chart.series[series].name);
        for (size_t index = 0; index < count(); ++index)
            *set << drawn({series, isRanked() ? count() - 1 - index : index});
        bars.append(set);
    }
}

void ChartPicture::dressBars(QAbstractBarSeries& bars) const {
    const qsizetype number = bars.barSets().size();
    for (qsizetype i = 0; i < number; ++i) {
        const auto series = size_t(isRanked() ? number - 1 - i : i);
        bars.barSets()[i]->setBrush(m_look.fills[series]);
        bars.barSets()[i]->setPen(outline(series));
    }
}

QRectF ChartPicture::mark(ChartPlace place) const {
    const double end = valuePosition(drawn(place));
    if (m_chart.kind == Chart::Line) {
        constexpr double kPoint = 3.5;
        const QPointF point(m_plot.left() + (double(place.index) + 0.5) * slot(), end);
        return {point - QPointF(kPoint, kPoint), point + QPointF(kPoint, kPoint)};
    }
    const double bar = slot() * barPart() / double(m_chart.series.size());
    const double start =
        double(place.index) * slot() + slot() * (1 - barPart()) / 2 + double(place.series) * bar;
    const double zero = valuePosition(0);
    const QRectF upright(m_plot.left() + start, qMin(zero, end), bar, std::abs(end - zero));
    const QRectF lying(qMin(zero, end), m_plot.top() + start, std::abs(end - zero), bar);
    return isRanked() ? lying : upright;
}

std::optional<ChartPlace> ChartPicture::at(QPointF point) const {
    const QRectF values =
        isRanked() ? QRectF(0, m_plot.top(), m_size.width(), m_plot.height())
                   : QRectF(m_plot.left(), m_plot.top(), m_plot.width(), m_size.height() - m_plot.top());
    if (!values.contains(point))
        return {};
    const double along = (isRanked() ? point.y() - m_plot.top() : point.x() - m_plot.left()) / slot();
    const size_t index = qMin(size_t(along), count() - 1);
    const auto number = double(m_chart.series.size());
    if (m_chart.kind != Chart::Line) {
        const double within = (along - double(index) - (1 - barPart()) / 2) / barPart();
        return ChartPlace{size_t(std::clamp(std::floor(within * number), 0.0, number - 1)), index};
    }
    ChartPlace nearest{0, index};
    for (size_t series = 1; series < m_chart.series.size(); ++series) {
        const auto distance = [&](ChartPlace place) {
            return std::abs(mark(place).center().y() - point.y());
        };
        if (distance({series, index}) < distance(nearest))
            nearest.series = series;
    }
    return nearest;
}

void ChartPicture::draw(QPainter& painter) const {
    const QRectF all(QPointF(), m_size);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(all, m_look.ground);
    drawGrid(painter);
    m_scene->render(&painter, all, all);
    painter.setFont(m_look.font);
    drawHead(painter);
    drawAxis(painter);
    isRanked() ? drawNames(painter) : drawLabels(painter);
    drawPoints(painter);
    drawValues(painter);
    painter.restore();
}

void ChartPicture::drawGrid(QPainter& painter) const {
    painter.setPen(QPen(m_look.grid, 1));
    for (const double tick : ticks())
        painter.drawLine(lineAt(tick));
}

/// Right across the plot.
QLineF ChartPicture::lineAt(double value) const {
    const double at = valuePosition(value);
    return isRanked() ? QLineF(at, m_plot.top(), at, m_plot.bottom())
                      : QLineF(m_plot.left(), at, m_plot.right(), at);
}

void ChartPicture::drawHead(QPainter& painter) const {
    painter.save();
    painter.setPen(m_look.ink);
    painter.setFont(titleFont(m_look.font));
    painter.drawText(m_title, Qt::TextWordWrap, m_chart.title);
    painter.restore();
    painter.setPen(m_look.quiet);
    painter.drawText(m_headLine, Qt::AlignLeft | Qt::AlignVCenter, m_chart.unit);
    if (m_chart.series.size() > 1)
        drawLegend(painter, m_headLine);
}

/// From the right end of its line.
void ChartPicture::drawLegend(QPainter& painter, QRectF line) const {
    const double height = line.height();
    for (size_t series = m_chart.series.size(); series-- > 0;) {
        const QString& name = m_chart.series[series].name;
        const double width = QFontMetricsF(m_look.font).horizontalAdvance(name);
        painter.setPen(m_look.ink);
        painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, name);
        line.setRight(line.right() - width - height * 0.4);
        drawSwatch(painter,
                   {line.right() - height * 1.6, line.top() + height * 0.2, height * 1.6, height * 0.6},
                   series);
        line.setRight(line.right() - height * 3);
    }
}

void ChartPicture::drawSwatch(QPainter& painter, QRectF box, size_t series) const {
    if (m_chart.kind == Chart::Line) {
        painter.setPen(QPen(m_look.fills[series], 2, series == 0 ? Qt::SolidLine : Qt::DashLine));
        painter.drawLine(QPointF(box.left(), box.center().y()), QPointF(box.right(), box.center().y()));
        return;
    }
    painter.setPen(series == 1 ? QPen(m_look.ink, 1) : QPen(Qt::NoPen));
    painter.setBrush(m_look.fills[series]);
    painter.drawRect(box);
}

void ChartPicture::drawAxis(QPainter& painter) const {
    const QFontMetricsF metrics(m_look.font);
    const double gap = metrics.height() / 4;
    painter.setPen(m_look.quiet);
    for (const double tick : ticks()) {
        const double at = valuePosition(tick);
        const double width = metrics.horizontalAdvance(axisText(tick)) + 2;
        const QRectF box = isRanked() ? QRectF(at - width / 2, m_plot.bottom() + gap, width, metrics.height())
                                      : QRectF(m_plot.left() - gap - width, at - metrics.height() / 2, width,
                                               metrics.height());
        const Qt::Alignment place = isRanked() ? Qt::AlignHCenter : Qt::AlignRight;
        painter.drawText(box, int(place | Qt::AlignVCenter), axisText(tick));
    }
    painter.setPen(QPen(m_look.quiet, 1));
    painter.drawLine(lineAt(0));
}

/// Only so many as there is room for, at even distances.
void ChartPicture::drawLabels(QPainter& painter) const {
    const QFontMetricsF metrics(m_look.font);
    const double gap = metrics.height() * 0.5, longest = metrics.height() * 9;
    const double width = qMin(widest(m_look.font, m_chart.labels), longest);
    const auto every = size_t(qMax(1.0, std::ceil((width + gap) / slot())));
    const double room = double(every) * slot() - gap;
    double end = -gap;
    for (size_t index = 0; index < count(); index += every) {
        const QString text = metrics.elidedText(m_chart.labels[qsizetype(index)], Qt::ElideRight, room);
        const double middle = m_plot.left() + (double(index) + 0.5) * slot();
        const double own = metrics.horizontalAdvance(text) + 2;
        const double left = qBound(0.0, middle - own / 2, qMax(0.0, m_size.width() - own));
        if (left < end + gap / 2)
            continue;
        end = left + own;
        painter.setPen(m_look.ink);
        painter.drawText(QRectF(left, m_plot.bottom() + gap / 2, own, metrics.height()), Qt::AlignCenter,
                         text);
        painter.setPen(QPen(m_look.quiet, 1));
        if (every > 1)
            painter.drawLine(QPointF(middle, m_plot.bottom()), QPointF(middle, m_plot.bottom() + gap / 3));
    }
}

void ChartPicture::drawNames(QPainter& painter) const {
    constexpr double kSmallest = 0.7;
    const double part = std::clamp(slot() / QFontMetricsF(m_look.font).height(), kSmallest, 1.0);
    painter.setFont(resized(m_look.font, part));
    const QFontMetricsF metrics(painter.font());
    const auto every = size_t(qMax(1.0, std::ceil(metrics.ascent() / slot())));
    const double left = QFontMetricsF(m_look.font).height() / 2;
    const QRectF box(left, m_plot.top(), m_plot.left() - 2 * left, slot());
    painter.setPen(m_look.ink);
    const auto drawName = [&](size_t index) {
        painter.drawText(box.translated(0, double(index) * slot()),
                         Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                         metrics.elidedText(m_chart.labels[qsizetype(index)], Qt::ElideRight, box.width()));
    };
    // What is summed up has no bar, so it needs its name.
    const size_t last = count() - 1;
    const bool named = m_chart.summedUp > 0;
    for (size_t index = 0; index < count(); index += every)
        if (!named || index + every <= last)
            drawName(index);
    if (named)
        drawName(last);
    painter.setFont(m_look.font);
}

/// Of a line, as long as they are single ones.
void ChartPicture::drawPoints(QPainter& painter) const {
    constexpr double kSingle = 10;
    if (m_chart.kind != Chart::Line || (slot() < kSingle && count() > 1))
        return;
    for (size_t series = 0; series < m_chart.series.size(); ++series)
        for (size_t index = 0; index < count(); ++index) {
            painter.setPen(QPen(m_look.fills[series], 2));
            painter.setBrush(series == 0 ? m_look.fills[0] : m_look.ground);
            const QRectF point = mark({series, index});
            series == 0 ? painter.drawEllipse(point) : painter.drawRect(point);
        }
}

/// Beside the bar's end; a negative one's on the other side of zero, where it is free.
void ChartPicture::drawValues(QPainter& painter) const {
    if (!m_tellsValues && (m_chart.summedUp == 0 || m_chart.series.size() > 1))
        return;
    const QFontMetricsF metrics(m_look.font);
    const double gap = metrics.height() / 4;
    painter.setPen(m_look.ink);
    for (size_t series = 0; series < m_chart.series.size(); ++series)
        for (size_t index = m_tellsValues ? 0 : count() - 1; index < count(); ++index) {
            const QRectF bar = mark({series, index});
            const QString text = common::formatNumber(m_chart.value(series, index), m_chart.form);
            const double width = metrics.horizontalAdvance(text) + 2;
            const QRectF box = isRanked() ? QRectF(bar.right() + gap, bar.center().y() - metrics.height() / 2,
                                                   width, metrics.height())
                                          : QRectF(bar.center().x() - width / 2, bar.top() - metrics.height(),
                                                   width, metrics.height());
            painter.drawText(box, Qt::AlignCenter, text);
        }
}

} // namespace platform
