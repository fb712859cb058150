#pragma once
#include "platform/Services.h"
#include "platform/chart/Chart.h"
#include <QWidget>
#include <optional>

class QPushButton;

namespace platform {

class ChartCanvas;

/// A chart beside its table: exact values under the pointer and by the arrow keys; saved and printed by its
/// buttons or its context menu once it has been handed the services.
class ChartView : public QWidget {
    Q_OBJECT
  public:
    explicit ChartView(QWidget* parent = nullptr);

    void setServices(const Services& services);
    void setChart(Chart chart);

    const Chart& chart() const { return m_chart; }

    /// What stands in the middle without data.
    void setEmptyText(const QString& text);

    /// The picture within the view, as it takes focus and pointer.
    ChartCanvas* canvas() const { return m_canvas; }

  private:
    QPushButton* addButton(const char* name, const QString& text, void (ChartView::*act)());
    void showMenu(const QPoint& position);
    void enableActs();
    void save();
    void print();

    Chart m_chart;
    std::optional<Services> m_services;
    ChartCanvas* m_canvas;
    QWidget* m_bar;
    QPushButton *m_save, *m_print;
};

} // namespace platform
