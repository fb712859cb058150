#include "masterdata/frmVerwaltungKunden.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "desks/MainDesks.h"
#include "desks/OrderDesk.h"
#include "masterdata/modVerwaltungKunden.h"
#include "platform/Navigation.h"
#include "platform/QtDialogs.h"
#include "platform/form/FieldHelpers.h"
#include "platform/report/PrintTable.h"
#include "store/StoreGlobals.h"
#include "ui_frmVerwaltungKunden.h"

using namespace modVerwaltungKunden;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

namespace {

struct Order {
    const char* text;
    const char16_t* sort;
};

constexpr int kStrasse = 4;
/// The queries of the list deliver by name.
constexpr int kByName = 1;
constexpr Order kOrders[] = {{QT_TRANSLATE_NOOP("frmVerwaltungKunden", "Kunden-ID"), u"lng_ID ASC"},
                             {QT_TRANSLATE_NOOP("frmVerwaltungKunden", "Name"), u"txt_Name ASC"},
                             {QT_TRANSLATE_NOOP("frmVerwaltungKunden", "Strasse"), u"txt_Strasse ASC"},
                             {QT_TRANSLATE_NOOP("frmVerwaltungKunden", "PLZ"), u"txt_PLZ ASC"},
                             {QT_TRANSLATE_NOOP("frmVerwaltungKunden", "Ort"), u"txt_Ort ASC"},
                             {QT_TRANSLATE_NOOP("frmVerwaltungKunden", "Telefon"), u"txt_Telefon ASC"},
                             {QT_TRANSLATE_NOOP("frmVerwaltungKunden", "Natel"), u"txt_Natel ASC"},
                             {QT_TRANSLATE_NOOP("frmVerwaltungKunden", "Erfasst"), u"date_Erfasst ASC"}};

/// A field would keep a line end that nobody can type, and store it.
QString onOneLine(QString text) {
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control)
            c = u' ';
    return text;
}

} // namespace

frmVerwaltungKunden::frmVerwaltungKunden(const platform::Services& services, telephony::PhoneBook& phoneBook,
                                         QWidget* parent) :
    MasterDataForm(services, ConnMain, parent),
    m_ui(std::make_unique<Ui::frmVerwaltungKunden>()), m_phoneBook(phoneBook) {
    m_ui->setupUi(this);
    setUpLists();
    setUpFields();
    setUpButtons();
    setUpForm({m_ui->txt_Firma, m_ui->txt_Name, m_ui->txt_Vorname, m_ui->txt_Strasse, m_ui->combo_Etage,
               m_ui->txt_PLZ, m_ui->txt_Ort, m_ui->txt_Telefon, m_ui->txt_Natel, m_ui->txt_EMail,
               m_ui->txt_Zusatzinfo},
              {14700, 8700});
    showQuery(AlleKunden());
}

frmVerwaltungKunden::~frmVerwaltungKunden() = default;

void frmVerwaltungKunden::setUpLists() {
    m_ui->ClientGrid->stretchColumn(kStrasse);
    m_ui->combo_Etage->addItem(tr("Erdgeschoss"));
    for (int floor = 1; floor <= 15; ++floor)
        m_ui->combo_Etage->addItem(tr("%1. Stock").arg(floor));
    for (const Order& order : kOrders)
        m_ui->combo_Sorting->addItem(tr(order.text));
    connectGuarded(Origin::User, m_ui->combo_Sorting, &QComboBox::activated, this,
                   [this](int index) { combo_Sorting_Click(index); });
}

void frmVerwaltungKunden::setUpFields() {
    for (QLineEdit* field : {m_ui->txt_PLZ, m_ui->txt_Telefon, m_ui->txt_Natel})
        platform::digitsOnly(*field, platform::Paste::AsItIs);
    platform::selectAllOnFocus(*m_ui->txt_Zusatzinfo);
}

void frmVerwaltungKunden::setUpButtons() {
    const auto onClick = [this](QPushButton* button, auto action) {
        connectGuarded(Origin::User, button, &QPushButton::clicked, this, action);
    };
    onClick(m_ui->cmdAllClients, [this] { showQuery(AlleKunden()); });
    onClick(m_ui->cmdSearch, [this] { cmdSearch_Click(); });
    onClick(m_ui->cmdSearchPhoneBook, [this] { cmdSearchPhoneBook_Click(); });
    onClick(m_ui->cmdAuftragserfassung, [this] { cmdAuftragserfassung_Click(); });
    onClick(m_ui->DruckerCommand, [this] {
        printRows(platform::installedReport(u"rep_Kundenliste.rpt"_s, tr("Kundenliste")),
                  [this](const platform::Progress& progress) {
                      FillKundenStamm(dataControl().Recordset(), progress);
                  });
    });
    // As long as no row was chosen the first one is the present one.
    onClick(m_ui->cmdNext, [this] { moveTo(qMax(m_ui->ClientGrid->row(), 0) + 1); });
    onClick(m_ui->cmdPrevious, [this] { moveTo(m_ui->ClientGrid->row() - 1); });
}

void frmVerwaltungKunden::showQuery(const QString& query) {
    m_query = query;
    FormatGrid();
}

void frmVerwaltungKunden::FormatGrid() {
    showRows(m_query, {{tr("ID"), 800, Qt::AlignHCenter},
                       {tr("Firma"), 1500},
                       {tr("Name"), 1200},
                       {tr("Vorname"), 1200},
                       {tr("Strasse"), 1500},
                       {{}, 0},
                       {tr("PLZ"), 500, Qt::AlignHCenter, {}, u"00000"_s},
                       {tr("Ort"), 1500},
                       {tr("Telefon"), 1100, Qt::AlignRight, {}, u"0000000000"_s},
                       {tr("Natel"), 1100, Qt::AlignRight, {}, u"0000000000"_s},
                       {{}, 0},
                       {tr("Erfasst"), 1650, Qt::AlignHCenter}});
    m_ui->ClientGrid->standAt(0);
    m_ui->combo_Sorting->setCurrentIndex(kByName);
    m_ui->lbl_KundenTotal->setText(QString::number(dataControl().rowCount()));
    m_ui->lbl_KundeEinzeln->clear();
}

void frmVerwaltungKunden::CleanMask() {
    MasterDataForm::CleanMask();
    for (QLineEdit* field : m_ui->Maske->findChildren<QLineEdit*>())
        field->clear();
    m_ui->txt_Zusatzinfo->clear();
    m_ui->combo_Etage->setCurrentIndex(0);
    for (QCheckBox* box : m_ui->Maske->findChildren<QCheckBox*>())
        box->setChecked(false);
    m_ui->lbl_KundeEinzeln->clear();
}

void frmVerwaltungKunden::openCustomer(qint64 customerId) {
    CleanMask();
    loadRecord(customerId);
}

void frmVerwaltungKunden::captureCustomer(const desks::WebCustomer& customer) {
    CleanMask();
    const std::pair<QLineEdit*, QString> fields[] = {
        {m_ui->txt_Firma, customer.firma},     {m_ui->txt_Name, customer.name},
        {m_ui->txt_Vorname, customer.vorname}, {m_ui->txt_Strasse, customer.strasse},
        {m_ui->txt_PLZ, customer.plz},         {m_ui->txt_Ort, customer.ort},
        {m_ui->txt_Telefon, customer.telefon}, {m_ui->txt_EMail, customer.email}};
    for (const auto& [field, text] : fields)
        field->setText(onOneLine(text));
    m_ui->combo_Etage->setCurrentIndex(std::max(0, m_ui->combo_Etage->findText(customer.etage)));
    platform::maximiseScreen(*this);
}

void frmVerwaltungKunden::moveTo(int row) {
    if (row >= 0 && row < m_ui->ClientGrid->rowCount())
        goToRow(row);
}

bool frmVerwaltungKunden::showRecord(qint64 key) {
    const auto kunde = LoadKunde(key);
    if (!kunde)
        return false;
    m_ui->lbl_KundeEinzeln->setText(QString::number(key));
    m_ui->txt_Firma->setText(kunde->txt_Firma);
    m_ui->txt_Name->setText(kunde->txt_Name);
    m_ui->txt_Vorname->setText(kunde->txt_Vorname);
    m_ui->txt_Strasse->setText(kunde->txt_Strasse);
    platform::chooseText(*m_ui->combo_Etage, kunde->txt_Etage);
    m_ui->txt_PLZ->setText(kunde->txt_PLZ);
    m_ui->txt_Ort->setText(kunde->txt_Ort);
    m_ui->txt_Telefon->setText(kunde->txt_Telefon);
    m_ui->txt_Natel->setText(kunde->txt_Natel);
    m_ui->txt_EMail->setText(kunde->txt_EMail);
    m_ui->txt_Zusatzinfo->setPlainText(kunde->txt_Zusatzinfo);
    m_ui->lbl_Erfassst->setText(kunde->date_Erfasst.toText());
    m_ui->check_Zusatzinfo->setChecked(kunde->flag_Zusatzinfo != 0);
    m_ui->check_ClientStatus->setChecked(kunde->flag_ClientStatus != 0);
    m_ui->check_Newsletter->setChecked(kunde->flag_Newsletter != 0);
    return true;
}

Kunde frmVerwaltungKunden::mask() const {
    return {.txt_Firma = m_ui->txt_Firma->text(),
            .txt_Name = m_ui->txt_Name->text(),
            .txt_Vorname = m_ui->txt_Vorname->text(),
            .txt_Strasse = m_ui->txt_Strasse->text(),
            .txt_Etage = m_ui->combo_Etage->currentText(),
            .txt_PLZ = m_ui->txt_PLZ->text(),
            .txt_Ort = m_ui->txt_Ort->text(),
            .txt_Telefon = m_ui->txt_Telefon->text(),
            .txt_Natel = m_ui->txt_Natel->text(),
            .txt_EMail = m_ui->txt_EMail->text(),
            .txt_Zusatzinfo = m_ui->txt_Zusatzinfo->toPlainText(),
            .flag_Zusatzinfo = m_ui->check_Zusatzinfo->isChecked(),
            .flag_ClientStatus = m_ui->check_ClientStatus->isChecked(),
            .flag_Newsletter = m_ui->check_Newsletter->isChecked()};
}

bool frmVerwaltungKunden::numberGiven() {
    const bool telefon = filled(*m_ui->txt_Telefon);
    const bool natel = filled(*m_ui->txt_Natel);
    return telefon || natel;
}

bool frmVerwaltungKunden::numberValid(const QLineEdit& field) const {
    return field.text().isEmpty() || common::isNumeric(field.text());
}

store::RowMark frmVerwaltungKunden::markRecord(qint64 key) const {
    return MarkKunde(key);
}

bool frmVerwaltungKunden::checkInput() {
    const QString caption = tr("Fehlende Eingabe");
    if (!filled(*m_ui->txt_Name))
        return refuse(*m_ui->txt_Name, tr("Bitte geben Sie einen Namen ein."), caption);
    if (!numberGiven())
        return refuse(*m_ui->txt_Telefon, tr("Bitte geben entweder eine Telefonnummer oder Natelnummer ein."),
                      caption);
    if (!numberValid(*m_ui->txt_Telefon))
        return refuse(*m_ui->txt_Telefon, tr("Bitte geben eine gültige Telefonnummer ein."), caption);
    if (!numberValid(*m_ui->txt_Natel))
        return refuse(*m_ui->txt_Natel, tr("Bitte geben eine gültige Natelnummer ein."), caption);
    return true;
}

void frmVerwaltungKunden::saveRecord() {
    m_saved = SaveKunde(mask(), key(), mark());
    showTotal();
}

void frmVerwaltungKunden::showTotal() {
    if (auto* box = platform::mainDesk<desks::StatusBox>(services().navigation))
        box->showKundenTotal(GetTotalKunden());
}

void frmVerwaltungKunden::showSaved() {
    showQuery(EinKunde(m_saved));
    CleanMask();
}

bool frmVerwaltungKunden::mayDelete() {
    const QString caption = tr("Löschen Kunde");
    if (!CanDeleteKunde(key()))
        return refuse(tr("Dieser Kunde kann nicht gelöscht werden, da bereits Buchungen bestehen."), caption,
                      platform::kInformation);
    return confirm(tr("Möchten Sie diesen Kunden wirklich löschen?"), caption);
}

void frmVerwaltungKunden::deleteRecord() {
    DeleteKunde(key(), mark());
    showTotal();
}

void frmVerwaltungKunden::showDeleted() {
    showQuery(AlleKunden());
    CleanMask();
}

void frmVerwaltungKunden::cmdSearch_Click() {
    if (const QString query = SucheKunden(mask()); !query.isEmpty())
        showQuery(query);
}

void frmVerwaltungKunden::cmdSearchPhoneBook_Click() {
    const QString telefon = m_ui->txt_Telefon->text();
    const auto entry = m_phoneBook.SearchPhoneBook(
        {telefon.trimmed().isEmpty() ? m_ui->txt_Natel->text() : telefon, m_ui->txt_Name->text(),
         m_ui->txt_Strasse->text(), m_ui->txt_PLZ->text(), m_ui->txt_Ort->text()});
    if (!entry)
        return;
    m_ui->txt_Name->setText(entry->txt_Name);
    m_ui->txt_Vorname->setText(entry->txt_Vorname);
    m_ui->txt_Strasse->setText(entry->txt_Strasse);
    m_ui->txt_PLZ->setText(entry->txt_PLZ);
    m_ui->txt_Ort->setText(entry->txt_Ort);
    m_ui->txt_Telefon->setText(entry->txt_Telefon);
    m_ui->txt_Natel->setText(entry->txt_Natel);
}

void frmVerwaltungKunden::cmdAuftragserfassung_Click() {
    auto* orders = platform::showDesk<desks::OrderDesk>(services().navigation);
    if (orders && key() > 0)
        orders->searchNumber(GetKundeTelefon(key()));
}

void frmVerwaltungKunden::combo_Sorting_Click(int index) {
    dataControl().Sort(QString::fromUtf16(kOrders[index].sort));
    m_ui->ClientGrid->standAt(0);
}
