#include "shop/frmInternetBestellungen.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "common/modFunctions.h"
#include "desks/CustomerDesk.h"
#include "desks/MainDesks.h"
#include "desks/OrderDesk.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/WebOrderMemory.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/QtDialogs.h"
#include "platform/WatchedQuery.h"
#include "platform/net/Internet.h"
#include "platform/net/PostURL.h"
#include "shop/modInternetBestellungen.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "ui_frmInternetBestellungen.h"
#include <QItemSelectionModel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using namespace modInternetBestellungen;
using common::connectGuarded;
using common::Origin;

namespace {

constexpr int kDaysAhead = 10;
constexpr int kDates = 33;
/// A postcode and the blank behind it.
constexpr qsizetype kPlz = 5;
constexpr qsizetype kMostOfMerkmal = 200;
/// A number that no customer has.
const QString kNobody = u"-999999999"_s;

enum Column : int {
    kID,
    kVersandzeit,
    kVersandart,
    kTotal,
    kTelefon,
    kFirma,
    kName,
    kVorname,
    kStrasse,
    kEtage,
    kPLZOrt,
    kEMail,
    kAnmerkungen,
    kColumns,
    /// Beside those of the order itself.
    kAuftrag = kColumns
};

/// The digits alone, as a number.
double telefonOf(const QString& text) {
    QString digits;
    for (const QChar c : text)
        if (common::isNumeric(QStringView(&c, 1)))
            digits += c;
    return common::parseNumber(digits).value_or(kNobody.toDouble());
}

/// Tells a web order from another one that bore its number in an earlier shop.
QString merkmalOf(const QString& telefon, const QString& versandzeit) {
    return (telefon.simplified() + u' ' + versandzeit.simplified()).left(kMostOfMerkmal);
}

/// What somebody sent may be of any length and in lines; the label is one line.
QString inOneLine(const QString& text) {
    constexpr qsizetype kMost = 300;
    return text.left(kMost).simplified();
}

} // namespace

struct frmInternetBestellungen::Bestellung {
    desks::WebOrderId id;
    QStringList texts;

    const QString& operator[](Column column) const { return texts[column]; }
};

frmInternetBestellungen::frmInternetBestellungen(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_ui(std::make_unique<Ui::frmInternetBestellungen>()), m_services(services) {
    m_ui->setupUi(this);
    DataControl.setObjectName(u"DataControl"_s);
    DataControl.setConnection(ConnMain);
    m_ui->BestellungGrid->setDataControl(DataControl);
    m_ui->BestellungGrid->setEmptyText(tr("Keine Internet Bestellungen"));
    m_ui->BestellungGrid->setRowLook(
        {.isQuiet = [this](int row) { return !m_ui->BestellungGrid->text(row, kAuftrag).isEmpty(); }});
    fillDates();
    setUpControls();
    cmdShowAll_Click();
    m_ui->BestellungGrid->setFocus();
}

frmInternetBestellungen::~frmInternetBestellungen() = default;

void frmInternetBestellungen::fillDates() {
    const double today = common::clock::today();
    for (int i = 0; i < kDates; ++i)
        m_ui->combo_AuftragsDatum->addItem(
            modFunctions::FormatDateDDMMYYYY(common::Serial{today + kDaysAhead - i}));
    m_ui->combo_AuftragsDatum->setCurrentIndex(kDaysAhead);
}

void frmInternetBestellungen::setUpControls() {
    const auto onClick = [this](QPushButton* button, void (frmInternetBestellungen::*handler)()) {
        connectGuarded(Origin::User, button, &QPushButton::clicked, this,
                       [this, handler](bool) { (this->*handler)(); });
    };
    onClick(m_ui->cmdLoad, &frmInternetBestellungen::cmdLoad_Click);
    onClick(m_ui->cmdShowAll, &frmInternetBestellungen::cmdShowAll_Click);
    onClick(m_ui->cmdDelete, &frmInternetBestellungen::cmdDelete_Click);
    onClick(m_ui->cmdEMailConfo, &frmInternetBestellungen::cmdEMailConfo_Click);
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this](bool) { close(); });
    connectGuarded(Origin::User, m_ui->BestellungGrid, &platform::DataGrid::rowActivated, this,
                   [this](int) { BestellungGrid_DblClick(); });
    connectGuarded(Origin::User, m_ui->BestellungGrid->selectionModel(),
                   &QItemSelectionModel::currentRowChanged, this, [this] { showDetails(); });
    connectGuarded(Origin::Timer, &store::stationNews(), &store::StationNews::shown, this,
                   [this](store::Topic topic) {
                       if (topic == store::Topic::WebOrders)
                           Refresh();
                   });
}

void frmInternetBestellungen::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (event->type() != QEvent::ParentChange || !frame)
        return;
    connectGuarded(Origin::User, frame, &QMdiSubWindow::aboutToActivate, this, [this, frame] {
        // A message box in front leaves the screen the present one. A click that brings the screen to the
        // front must find the row that it was made on.
        const bool comes = frame->mdiArea() && frame->mdiArea()->currentSubWindow() != frame;
        if (comes && QGuiApplication::mouseButtons() == Qt::NoButton)
            Refresh();
    });
}

void frmInternetBestellungen::FormatGrid() {
    m_ui->BestellungGrid->formatColumns(
        {{tr("Trx-Nr."), 1300, Qt::AlignRight},
         {tr("Lieferdatum"), 3000},
         {tr("Versandart"), 1700},
         {tr("Total"), 1500, Qt::AlignRight, u"0.00\" %1\""_s.arg(SysCurrency)},
         {tr("Telefon-Nr."), 2000},
         {{}, 0},
         {tr("Name"), 2000},
         {tr("Vorname"), 1800},
         {{}, 0},
         {{}, 0},
         {tr("Ort"), 2400},
         {{}, 0},
         {{}, 0},
         {tr("Auftrag"), 1900}});
    m_ui->BestellungGrid->stretchColumn(kVersandzeit);
}

void frmInternetBestellungen::readRows() {
    store::Rows rows = platform::readRows(m_query);
    const auto others = store::tasksOfOthers();
    rows.columns.push_back({u"Auftrag"_s, store::ColumnType::Text});
    for (auto& row : rows.rows) {
        const auto booked = orders::BookedWebOrder(
            {row[kID].toLong(), merkmalOf(row[kTelefon].toText(), row[kVersandzeit].toText())});
        const QString number = booked ? QString::number(booked->trxNr) : QString();
        const QString station = others.value(Aufgabe(row[kID].toLong()).name);
        if (!booked && !station.isEmpty())
            row.emplace_back(tr("bei %1").arg(station));
        else
            row.emplace_back(booked && booked->isPreOrder ? tr("Vorbestellung %1").arg(number) : number);
    }
    DataControl.show(std::move(rows));
    FormatGrid();
}

void frmInternetBestellungen::showRows(const QString& query) {
    m_query = query;
    readRows();
    m_ui->BestellungGrid->setRow(0);
    showDetails();
}

void frmInternetBestellungen::Refresh() {
    platform::DataGrid& grid = *m_ui->BestellungGrid;
    const auto before = chosen();
    readRows();
    for (int row = 0; before && row < grid.rowCount(); ++row)
        if (grid.value(row, kID).toLong() == before->id.number)
            grid.setRow(row);
    showDetails();
}

void frmInternetBestellungen::showDetails() {
    const platform::DataGrid& grid = *m_ui->BestellungGrid;
    const auto text = [&](Column column) { return grid.text(grid.row(), column); };
    m_ui->txt_Anmerkungen->setPlainText(text(kAnmerkungen));
    m_EMail = text(kEMail);
    m_ui->lbl_Name->setText(inOneLine(text(kName)));
    m_ui->lbl_Vorname->setText(inOneLine(text(kVorname)));
    m_ui->lbl_Strasse->setText(inOneLine(text(kStrasse)));
    m_ui->lbl_Ort->setText(inOneLine(text(kPLZOrt)));
    m_ui->lbl_Telefon->setText(inOneLine(text(kTelefon)));
    m_ui->lbl_EMail->setText(inOneLine(m_EMail));
}

void frmInternetBestellungen::cmdLoad_Click() {
    if (const auto day = common::parseDate(m_ui->combo_AuftragsDatum->currentText()))
        showRows(ListeAmTag(*day));
}

void frmInternetBestellungen::cmdShowAll_Click() {
    showRows(ListeAlle());
}

std::optional<frmInternetBestellungen::Bestellung> frmInternetBestellungen::chosen() const {
    const platform::DataGrid& grid = *m_ui->BestellungGrid;
    if (grid.row() < 0)
        return std::nullopt;
    QStringList texts;
    for (int column = 0; column < kColumns; ++column)
        texts << grid.text(grid.row(), column);
    return Bestellung{{grid.value(grid.row(), kID).toLong(), merkmalOf(texts[kTelefon], texts[kVersandzeit])},
                      texts};
}

bool frmInternetBestellungen::asks(const QString& question, const QString& title) {
    return m_services.dialogs.MsgBox(question, platform::kYesNo, title) == platform::kAnswerYes;
}

void frmInternetBestellungen::tells(const QString& text, const QString& title) {
    m_services.dialogs.MsgBox(text, platform::kInformation, title);
}

QString frmInternetBestellungen::askShop(const QString& script, qint64 id, QString& problem) {
    const platform::Endpoints& ends = m_services.internet.endpoints();
    problem = ends.missingForShop();
    return problem.isEmpty()
               ? platform::PostURL(m_services, ends.script(script + u"?ID="_s + QString::number(id)),
                                   &problem)
               : QString();
}

void frmInternetBestellungen::BestellungGrid_DblClick() {
    const auto bestellung = chosen();
    if (!bestellung || !mayTakeOver(bestellung->id) || !takeOn(bestellung->id.number))
        return;
    if (const auto kundenId = findKunde(*bestellung))
        takeOver(*bestellung, *kundenId);
}

bool frmInternetBestellungen::mayTakeOver(const desks::WebOrderId& web) {
    const auto booked = orders::BookedWebOrder(web);
    if (!booked)
        return true;
    const QString was =
        booked->isPreOrder
            ? tr("Diese Internet Bestellung wurde bereits als Vorbestellung %1 gespeichert.")
                  .arg(booked->trxNr)
            : tr("Diese Internet Bestellung wurde bereits als Auftrag %1 verbucht.").arg(booked->trxNr);
    return asks(was + u' ' + tr("Möchten Sie sie noch einmal übernehmen?"), tr("Internet Bestellung"));
}

bool frmInternetBestellungen::takeOn(qint64 id) {
    return platform::takeOn(m_services.dialogs, Aufgabe(id),
                            tr("%1 bearbeitet diese Internet Bestellung bereits."),
                            tr("Möchten Sie sie trotzdem übernehmen?"), tr("Internet Bestellung"));
}

std::optional<qint64> frmInternetBestellungen::findKunde(const Bestellung& bestellung) {
    using namespace modVerwaltungKunden;
    const double telefon = telefonOf(bestellung[kTelefon]);
    if (KundeExistsByTelefon(telefon)) {
        const qint64 found = FindKundeByTelefon(telefon);
        if (asks(tr("Dieser Kunde wurde in der Datenbank gefunden.") + u"\r\n"_s + GetKundeAdresse(found) +
                     u"\r\n\r\n"_s + tr("Möchten Sie diesen Kunden für diese Bestellung verwenden?"),
                 tr("Kunde")))
            return found;
    } else if (asks(tr("Dieser Kunde wurde nicht in der Kundendatenbank erkannt.") + u"\r\n"_s +
                        tr("Möchten Sie diesen Kunden zuerst erfassen?"),
                    tr("Kunde"))) {
        captureKunde(bestellung);
        return std::nullopt;
    }
    return askForKunde();
}

std::optional<qint64> frmInternetBestellungen::askForKunde() {
    const auto typed =
        common::parseNumber(m_services.dialogs.InputBox(tr("Geben Sie die Kunden-ID ein!"), tr("Kunde")));
    if (!typed) {
        tells(tr("Diese Kunden-ID ist ungültig."), tr("Kunde"));
        return std::nullopt;
    }
    using Key = std::numeric_limits<qint32>;
    const bool isKey = *typed == std::floor(*typed) && *typed >= 0 && *typed <= Key::max();
    if (!isKey || modVerwaltungKunden::GetKundeAdresse(qint64(*typed)).isEmpty()) {
        tells(tr("Diese Kunden-ID existiert nicht!"), tr("Kunde"));
        return std::nullopt;
    }
    return qint64(*typed);
}

void frmInternetBestellungen::captureKunde(const Bestellung& bestellung) {
    auto* kunden = platform::showDesk<desks::CustomerDesk>(m_services.navigation);
    if (!kunden)
        return;
    QString telefon = bestellung[kTelefon];
    const QString& plzOrt = bestellung[kPLZOrt];
    kunden->captureCustomer({.firma = bestellung[kFirma],
                             .name = bestellung[kName],
                             .vorname = bestellung[kVorname],
                             .strasse = bestellung[kStrasse],
                             .etage = bestellung[kEtage],
                             .plz = plzOrt.left(kPlz).trimmed(),
                             .ort = plzOrt.mid(kPlz).trimmed(),
                             .telefon = modFunctions::CleanTelefonNummer(telefon),
                             .email = bestellung[kEMail]});
}

void frmInternetBestellungen::takeOver(const Bestellung& bestellung, qint64 kundenId) {
    auto* orders = platform::showDesk<desks::OrderDesk>(m_services.navigation);
    if (!orders)
        return;
    orders->searchNumber(modVerwaltungKunden::GetKundeTelefon(kundenId));
    fetchLines(bestellung.id);
    auto* screen = dynamic_cast<QWidget*>(platform::showDesk<desks::OrderDesk>(m_services.navigation));
    if (screen)
        platform::maximiseScreen(*screen);
}

void frmInternetBestellungen::fetchLines(const desks::WebOrderId& id) {
    const QString title = tr("Internet Bestellung");
    QString problem;
    const QString answer = askShop(u"WebShopBestellungen_Details.asp"_s, id.number, problem);
    if (!problem.isEmpty())
        return tells(tr("Die Positionen der Bestellung %1 wurden nicht geholt.").arg(id.number) + u"\r\n"_s +
                         problem,
                     title);
    desks::WebOrder order{id, {}};
    // A server's answer inside the user's action.
    const bool isRead =
        common::guardedApart(Origin::Answer, [&] { order.lines = ParseWebShopBestellungDetails(answer); });
    if (!isRead || order.lines.empty())
        return tells(
            tr("Der Online Shop liefert keine lesbaren Positionen zur Bestellung %1.").arg(id.number), title);
    if (auto* orders = platform::showDesk<desks::OrderDesk>(m_services.navigation))
        orders->keyWebOrder(order);
}

void frmInternetBestellungen::cmdDelete_Click() {
    const auto bestellung = chosen();
    if (!bestellung)
        return;
    const qint64 id = bestellung->id.number;
    QString question = tr("Möchten Sie diese Internet Bestellung wirklich löschen?");
    if (const auto same = GleicheVorbestellung(id))
        question += u"\r\n\r\n"_s +
                    tr("Die Vorbestellung %1 (Kunde: %2, Lieferdatum: %3) wird ebenfalls gelöscht.")
                        .arg(QString::number(id), same->kunde.isEmpty() ? tr("unbekannt") : same->kunde,
                             same->lieferDatum.isEmpty() ? tr("keines") : same->lieferDatum);
    if (const QString station = store::holderOf(Aufgabe(id).name); !station.isEmpty())
        question.prepend(tr("%1 bearbeitet diese Internet Bestellung.").arg(station) + u"\r\n\r\n"_s);
    const QString title = tr("Internet Bestellung Löschen");
    if (!asks(question, title))
        return;
    QString problem;
    askShop(u"WebShopBestellungen_Delete.asp"_s, id, problem);
    DeleteBestellung(id);
    readRows();
    showDetails();
    if (!problem.isEmpty())
        return tells(tr("Die Bestellung %1 wurde auf dem Server nicht gelöscht. Sie kommt mit der nächsten "
                        "Abfrage wieder.")
                             .arg(id) +
                         u"\r\n"_s + problem,
                     title);
    desks::showMessage(m_services.navigation, tr("Internet Bestellung %1 gelöscht").arg(id));
}

void frmInternetBestellungen::cmdEMailConfo_Click() {
    m_services.navigation.showScreen(u"frmInternetEMailConfo"_s);
}
