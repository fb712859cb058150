#include "masterdata/frmProdukteExtras.h"
#include "common/Guard.h"
#include "masterdata/modProdukteExtras.h"
#include "platform/ui/FieldHelpers.h"
#include "platform/ui/ListPrinting.h"
#include "ui_frmProdukteExtras.h"

using namespace Qt::StringLiterals;
using namespace modProdukteExtras;
using common::connectGuarded;
using platform::ui::chooseText;
using platform::ui::fillNumbers;

frmProdukteExtras::frmProdukteExtras(const platform::Services& services, QWidget* parent) :
    MasterDataForm(services, parent), m_ui(std::make_unique<Ui::frmProdukteExtras>()) {
    m_ui->setupUi(this);
    fillLists();
    setUpForm({m_ui->txt_Extra, m_ui->combo_Stückelung, m_ui->combo_Einheit, m_ui->combo_Reihenfolge,
               m_ui->Preise->txt_Preis(1)},
              {14400, 7500});
    connectGuarded(m_ui->combo_Sort_Gruppe, &QComboBox::currentIndexChanged, this, [this] { FormatGrid(); });
    connectGuarded(m_ui->check_Sort_Status, &QCheckBox::toggled, this, [this] { FormatGrid(); });
    connectGuarded(m_ui->DruckerCommand, &QAbstractButton::clicked, this, [this] {
        platform::ui::printList(this->services(), u"rep_ProdukteExtras.rpt"_s, tr("Liste der Extras"),
                                [this] { FillArtikelZusatzStamm(dataControl().Recordset()); });
    });
    // What leaves the offer leaves the web as well; the reverse does not hold.
    connectGuarded(m_ui->check_Status, &QCheckBox::clicked, this, [this](bool inactive) {
        if (inactive)
            m_ui->check_Internet->setChecked(false);
    });
    FormatGrid();
}

frmProdukteExtras::~frmProdukteExtras() = default;

void frmProdukteExtras::fillLists() {
    fillNumbers(*m_ui->combo_Sort_Gruppe, 1, masterdata::kPriceGroups);
    m_ui->combo_Stückelung->addItems(masterdata::packagingWords());
    fillNumbers(*m_ui->combo_Einheit, 1, 25);
    fillNumbers(*m_ui->combo_Reihenfolge, 1, 250);
}

void frmProdukteExtras::FormatGrid() {
    showRows(ExtrasListe(),
             {{{}, 0},
              {tr("Extras"), 2500},
              {tr("Stückelung"), 1000, Qt::AlignHCenter},
              {tr("Einheit"), 700, Qt::AlignHCenter},
              {tr("Gruppe"), 700, Qt::AlignHCenter},
              {tr("Preis"), 1000, Qt::AlignRight, u"0.00"_s},
              {tr("MWSt-Code"), 1000, Qt::AlignHCenter},
              {tr("Reihenfolge"), 1000, Qt::AlignHCenter},
              {tr("Internet"), 800, Qt::AlignHCenter, tr("\"Nein\";\"Ja\"")},
              {tr("Status"), 800, Qt::AlignHCenter, tr("\"Aktiv\";\"Inaktiv\"")}},
             u"flag_Status = %1 AND lng_Gruppe = %2"_s.arg(int(m_ui->check_Sort_Status->isChecked()))
                 .arg(m_ui->combo_Sort_Gruppe->currentText()));
}

void frmProdukteExtras::CleanMask() {
    MasterDataForm::CleanMask();
    m_ui->txt_Extra->clear();
    m_ui->combo_Stückelung->setCurrentIndex(0);
    m_ui->combo_Einheit->setCurrentIndex(0);
    m_ui->check_Internet->setChecked(true);
    m_ui->check_Status->setChecked(false);
    m_ui->Preise->clear();
    m_ui->txt_Extra->setFocus();
}

bool frmProdukteExtras::showRecord(qint64 key) {
    const auto extra = LoadExtra(key);
    if (!extra)
        return false;
    m_ui->txt_Extra->setText(extra->txt_Extra);
    chooseText(*m_ui->combo_Stückelung, extra->txt_Stückelung);
    chooseText(*m_ui->combo_Einheit, QString::number(extra->lng_Einheit));
    chooseText(*m_ui->combo_Reihenfolge, QString::number(extra->lng_Reihenfolge));
    m_ui->check_Internet->setChecked(extra->flag_Internet);
    m_ui->check_Status->setChecked(extra->flag_Status);
    m_ui->Preise->setPrices(extra->Preise);
    return true;
}

bool frmProdukteExtras::checkInput() {
    if (!filled(*m_ui->txt_Extra))
        return refuse(tr("Bitte geben Sie eine Bezeichnung ein."), tr("Fehlerhafte Eingabe"));
    if (!m_ui->Preise->allNumeric())
        return refuse(tr("Bitte geben Sie überall einen gültigen Preis ein."), tr("Ungültige Eingabe"));
    platform::ui::removeQuotes(*m_ui->txt_Extra);
    if (FindExtra(m_ui->txt_Extra->text(), key()) >= 0)
        return refuse(tr("Diese Bezeichnung existiert bereits."), tr("Ungültige Eingabe"),
                      platform::kInformation);
    if (HasExtraProdukte(key(), m_ui->check_Status->isChecked()))
        return refuse(
            tr("Dieses Extra kann noch nicht deaktiviert werden, da noch Beziehungen mit Produkten "
               "bestehen. Bitte löschen Sie diese Beziehungen bevor Sie das Extra deaktivieren können."),
            tr("Statusmeldung"), platform::kInformation);
    return true;
}

void frmProdukteExtras::saveRecord() {
    SaveExtra({.txt_Extra = m_ui->txt_Extra->text(),
               .txt_Stückelung = m_ui->combo_Stückelung->currentText(),
               .lng_Einheit = m_ui->combo_Einheit->currentText().toLongLong(),
               .lng_Reihenfolge = m_ui->combo_Reihenfolge->currentText().toLongLong(),
               .flag_Internet = m_ui->check_Internet->isChecked(),
               .flag_Status = m_ui->check_Status->isChecked(),
               .Preise = m_ui->Preise->prices()},
              key());
}

bool frmProdukteExtras::mayDelete() {
    if (!CanDeleteExtra(key()))
        return refuse(tr("Dieses Extra kann nicht gelöscht werden, da bereits Buchungen bestehen."),
                      tr("Löschen Extra"), platform::kInformation);
    // The firm's caption of this question, also for an extra.
    return confirm(tr("Möchten Sie dieses Extra wirklich löschen?"), tr("Löschen Gruppe"));
}

void frmProdukteExtras::deleteRecord() {
    DeleteExtra(key());
}
