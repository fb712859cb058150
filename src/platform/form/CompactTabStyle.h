#pragma once
#include <QProxyStyle>
#include <QTabBar>

namespace platform {

/// Tabs with little room beside their text, so that a dozen categories stand in one row. Lives as long as its
/// tab bar.
class CompactTabStyle : public QProxyStyle {
    Q_OBJECT
  public:
    explicit CompactTabStyle(QTabBar* tabs) : QProxyStyle(QStringLiteral("Fusion")) { setParent(tabs); }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        constexpr int kRoom = 10;
        return metric == PM_TabBarTabHSpace ? kRoom : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace platform
