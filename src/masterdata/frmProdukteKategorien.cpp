#include "masterdata/frmProdukteKategorien.h"
#include "masterdata/modProdukteKategorien.h"
#include "platform/form/FieldHelpers.h"
#include "store/StoreGlobals.h"
#include "ui_frmProdukteKategorien.h"

using namespace modProdukteKategorien;

frmProdukteKategorien::frmProdukteKategorien(const platform::Services& services, QWidget* parent) :
    MasterDataForm(services, ConnMain, parent), m_ui(std::make_unique<Ui::frmProdukteKategorien>()) {
    m_ui->setupUi(this);
    platform::fillNumbers(*m_ui->combo_Reihenfolge, 1, 25);
    setUpForm({m_ui->txt_Gruppe, m_ui->combo_Reihenfolge}, {7000, 7000});
    follow(store::Topic::Catalogue);
    FormatGrid();
}

frmProdukteKategorien::~frmProdukteKategorien() = default;

void frmProdukteKategorien::FormatGrid() {
    showRows(ProduktGruppenListe(), {{{}, 0},
                                     {tr("Gruppe"), 2500},
                                     {tr("Reihenfolge"), 1000, Qt::AlignHCenter},
                                     {tr("Internet"), 800, Qt::AlignHCenter, tr("\"Nein\";\"Ja\"")}});
}

void frmProdukteKategorien::CleanMask() {
    MasterDataForm::CleanMask();
    m_ui->txt_Gruppe->clear();
    m_ui->check_Internet->setChecked(true);
    m_ui->txt_Gruppe->setFocus();
}

bool frmProdukteKategorien::showRecord(qint64 key) {
    const auto gruppe = LoadProduktGruppe(key);
    if (!gruppe)
        return false;
    m_ui->txt_Gruppe->setText(gruppe->txt_ProduktGruppe);
    platform::chooseText(*m_ui->combo_Reihenfolge, QString::number(gruppe->lng_Reihenfolge));
    m_ui->check_Internet->setChecked(gruppe->flag_Internet);
    return true;
}

store::RowMark frmProdukteKategorien::markRecord(qint64 key) const {
    return MarkProduktGruppe(key);
}

bool frmProdukteKategorien::checkInput() {
    if (!filled(*m_ui->txt_Gruppe))
        return refuse(*m_ui->txt_Gruppe, tr("Bitte geben Sie eine Gruppe ein."), tr("Fehlerhafte Eingabe"));
    platform::removeQuotes(*m_ui->txt_Gruppe);
    if (FindProduktGruppe(m_ui->txt_Gruppe->text(), key()) >= 0)
        return refuse(*m_ui->txt_Gruppe, tr("Diese Gruppe existiert bereits."), tr("Fehlende Eingabe"),
                      platform::kYesNo);
    return true;
}

void frmProdukteKategorien::saveRecord() {
    SaveProduktGruppe({m_ui->txt_Gruppe->text(), m_ui->combo_Reihenfolge->currentText().toLongLong(),
                       m_ui->check_Internet->isChecked()},
                      key(), mark());
}

bool frmProdukteKategorien::mayDelete() {
    if (!CanDeleteProduktGruppe(key()))
        return refuse(
            tr("Diese Produkte Gruppe kann nicht gelöscht werden, da bereits Produkte vernetzt sind."),
            tr("Löschen Gruppe"), platform::kInformation);
    return confirm(tr("Möchten Sie diese Produkt Gruppe wirklich löschen?"), tr("Löschen Gruppe"));
}

void frmProdukteKategorien::deleteRecord() {
    DeleteProduktGruppe(key(), mark());
}
