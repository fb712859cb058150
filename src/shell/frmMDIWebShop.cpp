// The web shop's orders in the main window: the poll, the panel and its bell.
#include "common/Guard.h"
#include "desks/WebOrderDesk.h"
#include "platform/Dialogs.h"
#include "platform/QtDialogs.h"
#include "platform/net/Internet.h"
#include "platform/net/PostURL.h"
#include "shell/frmMDI.h"
#include "shop/modInternetBestellungen.h"
#include "store/Stations.h"
#include "ui_frmMDI.h"
#include <QApplication>

using namespace Qt::StringLiterals;
using platform::Inet;

namespace {

const QString kMaster = u"WebShopBestellungen_Master.asp"_s;

const QString kPoll = u"Webshop-Abfrage"_s;
/// Two polls and a little more.
constexpr int kPollSeconds = 130;

/// Two faces that change each second, so that the panel is seen from across the room.
QString panelStyle(bool bright) {
    return u"QPushButton { background: %1; color: white; font-weight: bold; font-size: 20px; "
           "border-radius: 6px; padding: 0 14px; }"_s.arg(bright ? u"#c62828"_s : u"#7f1313"_s);
}

} // namespace

void frmMDI::startWebShop() {
    m_ui->ShowInternetListeCommand->show();
    Inet1 = m_services.internet.inet();
    Inet1->setObjectName(u"Inet1"_s);
    Inet1->setParent(this);
    common::connectGuarded(common::Origin::Answer, Inet1.get(), &Inet::StateChanged, this,
                           [this](int state) { Inet1_StateChanged(state); });
    InternetLinkTimer.start();
    InternetLinkTimer_Timer();
}

void frmMDI::InternetLinkTimer_Timer() {
    const platform::Endpoints& ends = m_services.internet.endpoints();
    if (!ends.hasShop() || Inet1->StillExecuting())
        return;
    // One station asks; the others see what it has fetched, and one of them goes on when it is gone.
    if (store::claim(kPoll, kPollSeconds))
        Inet1->Execute(ends.script(kMaster));
    else
        webOrdersWait(modInternetBestellungen::Offene());
}

void frmMDI::Inet1_StateChanged(int state) {
    if (state != Inet::icResponseCompleted && state != Inet::icError)
        return;
    // Once, and not every minute.
    const QString problem = Inet1->Problem() + Inet1->Refusal();
    if (problem != std::exchange(m_pollProblem, problem) && !problem.isEmpty())
        qWarning("Online Shop: %s", qUtf8Printable(problem));
    // Another station may have a better line.
    if (state == Inet::icError)
        return store::release(kPoll);
    webOrdersWait(modInternetBestellungen::ParseWebShopBestellungen(Inet1->Answer()));
}

void frmMDI::webOrdersWait(qint64 open) {
    m_webOrders = open - modInternetBestellungen::BeiAnderen();
    // None clears nothing: what called the user before calls until it was looked at.
    if (m_webOrders > 0)
        ordersWait(m_webOrders);
}

void frmMDI::ordersWait(qint64 count) {
    setInternetAttention(3);
    m_ui->ShowInternetListeCommand->setText(tr("@WebShop (%1)").arg(count));
    if (!isActiveWindow())
        QApplication::alert(this);
}

void frmMDI::ShowInternetListeCommand_Click() {
    fetchWebOrders();
    QWidget* const screen = m_screens->show(desks::WebOrderList::kScreen);
    // It may stand there already, with the rows of before and of any size.
    if (auto* list = dynamic_cast<desks::WebOrderList*>(screen)) {
        list->Refresh();
        platform::maximiseScreen(*screen);
    }
    setInternetAttention(0);
}

void frmMDI::openWebOrders() {
    if (m_ui->ShowInternetListeCommand->isVisible() && m_ui->ShowInternetListeCommand->isEnabled())
        ShowInternetListeCommand_Click();
}

void frmMDI::tellAboutShop(const QString& text) {
    m_services.dialogs.MsgBox(text, platform::kInformation, tr("Online Shop"));
}

/// What cannot be asked leaves the list as it was last seen.
void frmMDI::fetchWebOrders() {
    const platform::Endpoints& ends = m_services.internet.endpoints();
    if (!ends.hasShop())
        return tellAboutShop(ends.missingForShop());
    QString problem;
    const QString answer = platform::PostURL(m_services, ends.script(kMaster), &problem);
    if (!problem.isEmpty() && answer.isEmpty())
        return tellAboutShop(problem + u'\n' + tr("Die Liste zeigt, was zuletzt bekannt war."));
    if (!problem.isEmpty())
        tellAboutShop(problem);
    // A server's answer: what is wrong with it is told and does not end the program.
    common::guardedApart(common::Origin::Answer,
                         [&] { modInternetBestellungen::ParseWebShopBestellungen(answer); });
}

void frmMDI::setInternetAttention(int state) {
    m_internetAttention = state;
    QPushButton& panel = *m_ui->ShowInternetListeCommand;
    panel.setStyleSheet(state == 0 ? QString() : panelStyle(true));
    if (state == 0)
        panel.setText(tr("@WebShop"));
}

void frmMDI::TimerBeep_Timer() {
    if (m_internetAttention != 3)
        return;
    m_panelIsBright = !m_panelIsBright;
    m_ui->ShowInternetListeCommand->setStyleSheet(panelStyle(m_panelIsBright));
    beep();
}
