#pragma once
#include "platform/chart/Chart.h"
#include <QChart>
#include <QFont>
#include <QGraphicsScene>
#include <QPalette>
#include <memory>
#include <optional>

class QAbstractBarSeries;

namespace platform {

/// Colours and letters of a picture.
struct ChartLook {
    QColor ground, ink, quiet, grid;
    QColor fills[2]; ///< of the series; told apart by their lightness
    QFont font;      ///< sized in pixels

    static ChartLook onScreen(const QPalette& palette, const QFont& font);
    /// Dark on white, whatever the screen's colours.
    static ChartLook onPaper();
};

/// One value of a chart.
struct ChartPlace {
    size_t series = 0, index = 0;

    friend bool operator==(const ChartPlace&, const ChartPlace&) = default;
};

/// A chart laid out in a size, with all its texts. Bars, lines and grid are those of the toolkit's charts;
/// the texts are set here, since those shorten every label that finds no room.
class ChartPicture {
  public:
    /// `chart` is arranged already, and not empty.
    ChartPicture(Chart chart, ChartLook look, QSizeF size);

    /// Draws it from the painter's origin, one unit a pixel of its size.
    void draw(QPainter& painter) const;

    /// The value that is meant by a point of the picture; nothing beside the values and their names.
    std::optional<ChartPlace> at(QPointF point) const;
    /// The bar or the point of a value.
    QRectF mark(ChartPlace place) const;

    const QRectF& plot() const { return m_plot; }

  private:
    struct Scale {
        double low = 0, high = 1, step = 1;
    };

    bool isRanked() const { return m_chart.kind == Chart::Ranked; }

    size_t count() const { return size_t(m_chart.labels.size()); }

    double slot() const;
    double barPart() const;
    double drawn(ChartPlace place) const;
    double valuePosition(double value) const;
    QString axisText(double value) const;
    std::vector<double> ticks() const;

    void layOut();
    Scale scaleFor(double length) const;
    bool valuesFit() const;
    double valueRoom() const;
    void build();
    void addBars(QAbstractBarSeries& bars) const;
    void dressBars(QAbstractBarSeries& bars) const;

    void drawGrid(QPainter& painter) const;
    QLineF lineAt(double value) const;
    void drawHead(QPainter& painter) const;
    void drawLegend(QPainter& painter, QRectF line) const;
    void drawSwatch(QPainter& painter, QRectF box, size_t series) const;
    void drawAxis(QPainter& painter) const;
    void drawLabels(QPainter& painter) const;
    void drawNames(QPainter& painter) const;
    void drawPoints(QPainter& painter) const;
    void drawValues(QPainter& painter) const;
    QPen outline(size_t series) const;

    Chart m_chart;
    ChartLook m_look;
    QSizeF m_size;
    QRectF m_title, m_headLine, m_plot;
    Scale m_scale;
    bool m_tellsValues = false;
    std::unique_ptr<QGraphicsScene> m_scene;
};

} // namespace platform
