#include "masterdata/frmVerwaltungKuriere.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "platform/form/FieldHelpers.h"
#include "store/StoreGlobals.h"
#include "ui_frmVerwaltungKuriere.h"

using namespace modVerwaltungKuriere;

frmVerwaltungKuriere::frmVerwaltungKuriere(const platform::Services& services, QWidget* parent) :
    MasterDataForm(services, ConnMain, parent), m_ui(std::make_unique<Ui::frmVerwaltungKuriere>()) {
    m_ui->setupUi(this);
    platform::fillNumbers(*m_ui->combo_Reihenfolge, 1, 25);
    setUpForm({m_ui->txt_Kurzzeichen, m_ui->txt_Bezeichnung, m_ui->combo_Reihenfolge}, {7000, 7000});
    follow(store::Topic::Catalogue);
    FormatGrid();
}

frmVerwaltungKuriere::~frmVerwaltungKuriere() = default;

void frmVerwaltungKuriere::FormatGrid() {
    showRows(KuriereListe(), {{{}, 0},
                              {tr("Kurzzeichen"), 1500},
                              {tr("Bezeichnung"), 2500},
                              {tr("Reihenfolge"), 1000, Qt::AlignHCenter}});
}

void frmVerwaltungKuriere::CleanMask() {
    MasterDataForm::CleanMask();
    m_ui->txt_Kurzzeichen->clear();
    m_ui->txt_Bezeichnung->clear();
    m_ui->txt_Kurzzeichen->setFocus();
}

void frmVerwaltungKuriere::chooseRow(int row) {
    loadRecord(keyOfRow(row));
}

bool frmVerwaltungKuriere::showRecord(qint64 key) {
    const auto kurier = LoadKurier(key);
    if (!kurier)
        return false;
    m_ui->txt_Kurzzeichen->setText(kurier->txt_Kurzzeichen);
    m_ui->txt_Bezeichnung->setText(kurier->txt_Bezeichnung);
    platform::chooseText(*m_ui->combo_Reihenfolge, QString::number(kurier->lng_Reihenfolge));
    return true;
}

store::RowMark frmVerwaltungKuriere::markRecord(qint64 key) const {
    return MarkKurier(key);
}

bool frmVerwaltungKuriere::checkInput() {
    if (!filled(*m_ui->txt_Kurzzeichen))
        return refuse(*m_ui->txt_Kurzzeichen, tr("Bitte geben Sie ein Kurzzeichen ein."),
                      tr("Fehlerhafte Eingabe"));
    if (FindKurier(m_ui->txt_Kurzzeichen->text(), key()) >= 0)
        return refuse(*m_ui->txt_Kurzzeichen, tr("Dieses Kurzzeichen existiert bereits."),
                      tr("Fehlende Eingabe"), platform::kYesNo);
    if (!filled(*m_ui->txt_Bezeichnung))
        return refuse(*m_ui->txt_Bezeichnung, tr("Bitte geben Sie eine Bezeichnung ein."),
                      tr("Fehlerhafte Eingabe"));
    return true;
}

void frmVerwaltungKuriere::saveRecord() {
    SaveKurier({m_ui->txt_Kurzzeichen->text(), m_ui->txt_Bezeichnung->text(),
                m_ui->combo_Reihenfolge->currentText().toLongLong()},
               key(), mark());
}

bool frmVerwaltungKuriere::mayDelete() {
    return CanDeleteKurier(key()) ||
           refuse(tr("Dieser Kurier kann nicht gelöscht werden, da bereits Buchungen bestehen."),
                  tr("Löschen Kurier"), platform::kInformation);
}

void frmVerwaltungKuriere::deleteRecord() {
    DeleteKurier(key(), mark());
}
