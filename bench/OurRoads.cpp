#include "OurRoads.h"
#include "common/Convert.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/frmLetzteBestellungen.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "orders/modBestellNummern.h"
#include "store/SqliteEngine.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <QCoreApplication>

namespace bench {

using orders::Col;

OpenInstallation::OpenInstallation(const QString& folder) {
    store::setAppPath(folder);
    store::OpenDatabases();
    store::LoadSystemSettings();
}

OpenInstallation::~OpenInstallation() {
    store::CloseDatabases();
}

sqlite3* OpenInstallation::handle() {
    return dynamic_cast<store::SqliteEngine&>(ConnMain.engine()).handle();
}

OrderRoads::OrderRoads() {
    for (orders::WorkingOrder* order : {&m_order, &m_booked})
        order->SetUp();
}

void OrderRoads::call(orders::WorkingOrder& order, const QString& number) {
    const qint64 id = modVerwaltungKunden::FindKundeByTelefon(common::parseNumber(number).value_or(-1));
    order.SucheTelefonNummer(number);
    if (modVerwaltungKunden::KundeExists(id))
        order.FillFromCall(id);
}

void OrderRoads::keyedCode(const QString& code) {
    m_order.BestellungGrid.endEdit(m_line++ % kLines, Col::Kurzzeichen, code);
}

void OrderRoads::fill(orders::WorkingOrder& order, const Workload& work) {
    call(order, work.callers.front().number);
    for (size_t i = 0; i < kLines; ++i)
        order.BestellungGrid.endEdit(int(i), Col::Kurzzeichen, work.codes.at(i).keyed);
}

void OrderRoads::prepare(const Workload& work) {
    m_line = 0;
    for (orders::WorkingOrder* order : {&m_order, &m_booked})
        fill(*order, work);
}

void OrderRoads::book() {
    modAuftragswesenAuftragserfassung::SaveBestellung(m_booked, m_services.dialogs, m_services.navigation);
}

void OrderRoads::load(qint64 trxNr) {
    modAuftragswesenAuftragserfassung::LoadBestellung(m_order, trxNr);
}

qint64 OrderRoads::following(qint64 trxNr) {
    return modBestellNummern::GetFollowingTrxNr(trxNr);
}

ScreenRoads::ScreenRoads() : m_screen(m_services.services(), m_phoneBook) {
    m_screen.resize(1366, 768);
    m_screen.show();
    paint();
}

void ScreenRoads::lastOrders() {
    m_screen.findChild<frmLetzteBestellungen*>()->readNow();
}

void ScreenRoads::keyedCode(const QString& code) {
    m_screen.order().BestellungGrid.endEdit(m_line++ % kLines, Col::Kurzzeichen, code);
}

void ScreenRoads::takeOver(const QString& number, const desks::WebOrder& web) {
    m_screen.searchNumber(number);
    m_screen.keyWebOrder(web);
    if (m_screen.order().LastFilledRow() + 1 != int(web.lines.size()))
        qFatal("The web order is not whole.");
}

void ScreenRoads::paintOnly() {
    QCoreApplication::sendPostedEvents();
}

void ScreenRoads::paint() {
    paintOnly();
    QCoreApplication::processEvents();
}

} // namespace bench
