#pragma once
#include <QProxyStyle>

namespace shell {

/// Fusion with the desktop's colours made readable, and a strong colour only where the focus is: what is
/// chosen in another list is pale. In dialogs Yes stands left of No on every desktop, and buttons bear no
/// icons.
class QuietStyle : public QProxyStyle {
    Q_OBJECT
  public:
    QuietStyle();

    void polish(QPalette& palette) override;
    using QProxyStyle::polish;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

} // namespace shell
