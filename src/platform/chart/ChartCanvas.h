#pragma once
#include "platform/chart/ChartPicture.h"
#include <QWidget>

class QLabel;

namespace platform {

/// The picture itself: shows the exact value under the pointer, or of the bar that the arrow keys stand on.
class ChartCanvas : public QWidget {
    Q_OBJECT
  public:
    explicit ChartCanvas(QWidget* parent = nullptr);

    void setChart(const Chart& chart);
    void setEmptyText(const QString& text);

    /// The picture as it stands; none without data.
    const ChartPicture* picture();

    QSize sizeHint() const override { return {640, 360}; }

    QSize minimumSizeHint() const override { return {320, 200}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    /// What the note tells of.
    std::optional<ChartPlace> told() const;
    void step(int places, int series);
    void layOutAnew();
    void showNote();
    void placeNote();

    Chart m_chart; ///< arranged
    QString m_emptyText;
    std::optional<ChartPicture> m_picture;
    std::optional<ChartPlace> m_pointed, m_chosen; ///< by the pointer, by the keys
    QLabel* m_note;
};

} // namespace platform
