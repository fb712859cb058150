#include "shell/WaitingCall.h"
#include "common/Guard.h"
#include <QAccessible>
#include <QApplication>
#include <QEvent>

using namespace Qt::StringLiterals;

namespace shell {
namespace {

// Black on amber: seen from across the room, whatever the palette.
const QString kAmber = u"QPushButton { background: #ffb300; color: black; border: 2px solid #8a5a00; "
                       "border-radius: 6px; padding: 0 10px; }"_s;
/// What waits no more.
const QString kGrey = u"QPushButton { background: #d5d5d5; color: #404040; border: 2px solid #9a9a9a; "
                      "border-radius: 6px; padding: 0 10px; }"_s;
constexpr int kPadding = 28;

} // namespace

WaitingCall::WaitingCall(const Panel& panel, QObject* parent) :
    QObject(parent), m_panel(panel), m_font(panel.number.font()) {
    constexpr auto kTakenInSight = std::chrono::seconds(8);
    m_leaving.setObjectName(u"AnrufGeht"_s);
    m_leaving.setSingleShot(true);
    m_leaving.setInterval(kTakenInSight);
    common::connectGuarded(common::Origin::Timer, &m_leaving, &QTimer::timeout, this, [this] {
        clear();
        Q_EMIT left();
    });
    common::connectGuarded(common::Origin::User, &m_panel.number, &QPushButton::clicked, this,
                           [this] { Q_EMIT clicked(); });
    clear();
}

WaitingCall::~WaitingCall() {
    qDeleteAll(m_banners);
}

void WaitingCall::show(const QString& number) {
    // The ones before went with the one that was taken elsewhere.
    m_count = m_takenBy.isEmpty() ? m_count + 1 : 1;
    m_takenBy.clear();
    m_leaving.stop();
    setLook(kAmber);
    m_panel.number.setText(number);
    fitNumber();
    setCaller({});
    m_panel.key.setText(m_count == 1 ? tr("annehmen mit F9") : tr("F9 · %1 Anrufe warten").arg(m_count));
    setVisible(true);
    showBanners();
    qApp->installEventFilter(this);
    QAccessibleEvent alert(&m_panel.number, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void WaitingCall::setCaller(const QString& name) {
    m_panel.caller.setText(
        m_panel.caller.fontMetrics().elidedText(name, Qt::ElideRight, m_panel.caller.width()));
    m_panel.caller.setToolTip(m_panel.caller.text() == name ? QString() : name);
    m_panel.caller.setVisible(!name.isEmpty());
    m_panel.number.setAccessibleDescription(name.isEmpty() ? number() : u"%1, %2"_s.arg(number(), name));
}

void WaitingCall::setTaken(const QString& station) {
    m_takenBy = station;
    const QString told = tr("%1 nimmt den Anruf an").arg(station);
    m_panel.key.setText(
        m_panel.key.fontMetrics().elidedText(told, Qt::ElideMiddle, m_panel.key.maximumWidth()));
    m_panel.key.setToolTip(told);
    m_panel.number.setAccessibleDescription(told);
    setLook(kGrey);
    for (const QPointer<QPushButton>& banner : m_banners)
        if (banner) {
            banner->setText(bannerText());
            place(*banner);
        }
    m_leaving.start();
}

void WaitingCall::setLook(const QString& look) {
    m_panel.number.setStyleSheet(look);
    for (const QPointer<QPushButton>& banner : m_banners)
        if (banner)
            banner->setStyleSheet(look);
}

QString WaitingCall::bannerText() const {
    return m_takenBy.isEmpty() ? tr("Anruf %1 · annehmen mit F9").arg(number())
                               : tr("Anruf %1 · %2 nimmt ihn an").arg(number(), m_takenBy);
}

void WaitingCall::clear() {
    qApp->removeEventFilter(this);
    m_count = 0;
    m_takenBy.clear();
    m_leaving.stop();
    m_panel.key.setToolTip({});
    setLook(kAmber);
    m_panel.number.setText({});
    setCaller({});
    setVisible(false);
    // Later: one of them may be what was clicked.
    for (const QPointer<QPushButton>& banner : std::exchange(m_banners, {}))
        if (banner) {
            banner->hide();
            banner->setObjectName(QString());
            banner->deleteLater();
        }
}

void WaitingCall::setVisible(bool on) {
    for (QWidget* part : m_panel.lights)
        part->setVisible(on);
    m_panel.key.setVisible(on);
    m_panel.number.setVisible(on);
}

/// A long number in smaller figures: the panel keeps its width.
void WaitingCall::fitNumber() {
    constexpr double kSmallest = 9;
    QFont font = m_font;
    const int room = m_panel.number.width() - kPadding;
    while (QFontMetrics(font).horizontalAdvance(number()) > room && font.pointSizeF() > kSmallest)
        font.setPointSizeF(font.pointSizeF() - 1);
    m_panel.number.setFont(font);
}

void WaitingCall::showBanners() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const bool beside =
            window->isVisible() && window->windowType() == Qt::Window && window != m_panel.number.window();
        if (!beside)
            continue;
        auto* banner = window->findChild<QPushButton*>(u"WartenderAnruf"_s, Qt::FindDirectChildrenOnly);
        if (!banner) {
            banner = new QPushButton(window);
            banner->setObjectName(u"WartenderAnruf"_s);
            banner->setStyleSheet(m_panel.number.styleSheet());
            banner->setFocusPolicy(Qt::NoFocus);
            QFont font = m_font;
            font.setPointSizeF(font.pointSizeF() * 0.7);
            banner->setFont(font);
            common::connectGuarded(common::Origin::User, banner, &QPushButton::clicked, this,
                                   [this] { Q_EMIT clicked(); });
            m_banners << banner;
        }
        banner->setText(bannerText());
        place(*banner);
        banner->show();
        banner->raise();
    }
}

void WaitingCall::place(QPushButton& banner) {
    constexpr int kMargin = 16;
    const QSize room = banner.parentWidget()->size();
    banner.resize(banner.sizeHint() + QSize(0, kMargin));
    banner.move((room.width() - banner.width()) / 2, room.height() - banner.height() - kMargin);
}

/// A window that opens while the call waits tells it too, and keeps it in sight.
bool WaitingCall::eventFilter(QObject* watched, QEvent* event) {
    const bool comes = event->type() == QEvent::WindowActivate || event->type() == QEvent::Resize;
    if (comes && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow())
        showBanners();
    return QObject::eventFilter(watched, event);
}

} // namespace shell
