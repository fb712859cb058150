#include "shell/QuietStyle.h"
#include "platform/form/Contrast.h"
#include <QAbstractItemView>
#include <QApplication>
#include <QDialogButtonBox>
#include <QStyleOptionViewItem>

using platform::mixed;
using platform::readable;

namespace shell {
namespace {

void polishSelection(QPalette& palette) {
    const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
    const QColor strong = readable(palette.color(QPalette::Active, QPalette::Highlight), text);
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor pale = mixed(base, strong, 0.25);
    palette.setColor(QPalette::Active, QPalette::Highlight, strong);
    for (const auto group : {QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Highlight, pale);
        palette.setColor(group, QPalette::HighlightedText,
                         readable(palette.color(QPalette::Active, QPalette::Text), pale));
    }
}

/// What is shut or a hint is paler than the rest, but no riddle.
void polishQuietTexts(QPalette& palette) {
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor quiet = readable(mixed(palette.color(QPalette::Active, QPalette::Text), window, 0.6), window,
                                  palette.color(QPalette::Active, QPalette::Button));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, readable(quiet, base, window));
    palette.setColor(QPalette::PlaceholderText, readable(quiet, base));
    palette.setColor(QPalette::Link, readable(palette.color(QPalette::Active, QPalette::Link), base, window));
}

bool hasFocus(const QWidget& view) {
    const QWidget* focus = QApplication::focusWidget();
    return focus && (focus == &view || view.isAncestorOf(focus));
}

} // namespace

QuietStyle::QuietStyle() : QProxyStyle(QStringLiteral("Fusion")) {
}

void QuietStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    polishSelection(palette);
    polishQuietTexts(palette);
}

int QuietStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_DialogButtonLayout:
        return QDialogButtonBox::WinLayout;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

void QuietStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
    if (element != CE_ItemViewItem || !item || !view || view->window()->windowType() == Qt::Popup ||
        hasFocus(*view))
        return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionViewItem resting(*item);
    resting.state.setFlag(State_Active, false);
    QProxyStyle::drawControl(element, &resting, painter, widget);
}

} // namespace shell
