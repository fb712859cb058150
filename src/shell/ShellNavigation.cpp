#include "shell/ShellNavigation.h"
#include "masterdata/CustomerDesk.h"
#include "orders/OrderDesk.h"
#include "orders/PreOrderDesk.h"
#include "shell/frmMDI.h"

namespace shell {

bool ShellNavigation::hasScreen(const QString& screen) const {
    return m_window && m_window->screens().has(screen) && m_window->screens().mayShow(screen);
}

void ShellNavigation::showScreen(const QString& screen, bool) {
    if (m_window)
        m_window->screens().show(screen);
}

template <typename Desk> Desk* ShellNavigation::desk(const QString& screen) {
    if (!m_window)
        return nullptr;
    m_window->screens().show(screen);
    return dynamic_cast<Desk*>(m_window->screens().open(screen));
}

void ShellNavigation::openOrderForNumber(const QString& number) {
    if (auto* orders = desk<orders::OrderDesk>(QStringLiteral("frmAuftragswesenAuftragserfassung")))
        orders->searchNumber(number);
}

void ShellNavigation::openCustomer(qint64 customerId) {
    if (auto* customers = desk<masterdata::CustomerDesk>(QStringLiteral("frmVerwaltungKunden")))
        customers->openCustomer(customerId);
}

void ShellNavigation::openBooking(qint64 trxNr) {
    if (auto* orders = desk<orders::OrderDesk>(QStringLiteral("frmAuftragswesenAuftragserfassung")))
        orders->loadBooking(trxNr);
}

void ShellNavigation::openVorbestellung(qint64 trxNr) {
    if (auto* orders = desk<orders::OrderDesk>(QStringLiteral("frmAuftragswesenAuftragserfassung")))
        orders->loadPreOrder(trxNr);
}

void ShellNavigation::showVorbestellung(qint64 trxNr) {
    if (auto* list = desk<orders::PreOrderList>(QStringLiteral("frmAuftragswesenVorbestellungen")))
        list->ShowVorbestellung(trxNr);
}

void ShellNavigation::showVorbestellungAlarm(qint64 trxNr) {
    if (auto* alarm = desk<orders::PreOrderAlarm>(QStringLiteral("frmAuftragswesenVorbestellungenAlarm")))
        alarm->setFaellig(trxNr);
}

void ShellNavigation::showNextTrxNr(const QString& number) {
    if (m_window)
        m_window->showAuftragsNummer(number);
}

void ShellNavigation::showVorbestellungCount(qint64 count) {
    if (m_window)
        m_window->showVorbestellungCount(count);
}

void ShellNavigation::showKundenTotal(qint64 count) {
    if (m_window)
        m_window->showKundenTotal(count);
}

void ShellNavigation::incomingCall(const QString& GerufeneNr, const QString& AnrufNr,
                                   const QString& AnrufFormat) {
    if (m_window)
        m_window->BasicCAPI32_IncomingCall(GerufeneNr, AnrufNr, AnrufFormat);
}

} // namespace shell
