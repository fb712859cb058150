#include "masterdata/frmProdukteExtras.h"
#include "common/Guard.h"
#include "masterdata/modProdukteExtras.h"
#include "platform/form/FieldHelpers.h"
#include "platform/report/PrintTable.h"
#include "store/StoreGlobals.h"
#include "ui_frmProdukteExtras.h"

using namespace Qt::StringLiterals;
using namespace modProdukteExtras;
using common::connectGuarded;
using common::Origin;

frmProdukteExtras::frmProdukteExtras(const platform::Services& services, QWidget* parent) :
    frmArtikel(services, ConnMain, parent), m_ui(std::make_unique<Ui::frmProdukteExtras>()) {
    m_ui->setupUi(this);
    setUpArtikel(*m_ui->check_Internet, 250, ExtrasListe(), {{{}, 0}, {tr("Extras"), 2500}});
    // The prices are a ring of their own.
    setUpForm({m_ui->txt_Extra, m_ui->combo_Stückelung, m_ui->combo_Einheit, m_ui->combo_Reihenfolge},
              {14400, 7500}, preise().txt_Preis(1));
    connectGuarded(Origin::User, m_ui->DruckerCommand, &QAbstractButton::clicked, this, [this] {
        printRows(platform::installedReport(u"rep_ProdukteExtras.rpt"_s, tr("Liste der Extras")),
                  [this](const platform::Progress& progress) {
                      FillArtikelZusatzStamm(dataControl().Recordset(), progress);
                  });
    });
    FormatGrid();
}

frmProdukteExtras::~frmProdukteExtras() = default;

void frmProdukteExtras::CleanMask() {
    MasterDataForm::CleanMask();
    cleanArtikel();
    m_ui->txt_Extra->clear();
    m_ui->txt_Extra->setFocus();
}

bool frmProdukteExtras::showRecord(qint64 key) {
    const auto extra = LoadExtra(key);
    if (!extra)
        return false;
    m_ui->txt_Extra->setText(extra->txt_Extra);
    showArtikel(extra->Artikel);
    return true;
}

store::RowMark frmProdukteExtras::markRecord(qint64 key) const {
    return MarkExtra(key);
}

bool frmProdukteExtras::checkInput() {
    if (!filled(*m_ui->txt_Extra))
        return refuse(*m_ui->txt_Extra, tr("Bitte geben Sie eine Bezeichnung ein."),
                      tr("Fehlerhafte Eingabe"));
    if (!pricesGiven())
        return false;
    platform::removeQuotes(*m_ui->txt_Extra);
    if (FindExtra(m_ui->txt_Extra->text(), key()) >= 0)
        return refuse(*m_ui->txt_Extra, tr("Diese Bezeichnung existiert bereits."), tr("Ungültige Eingabe"),
                      platform::kInformation);
    if (HasExtraProdukte(key(), m_ui->check_Status->isChecked()))
        return refuse(
            *m_ui->check_Status,
            tr("Dieses Extra kann noch nicht deaktiviert werden, da noch Beziehungen mit Produkten "
               "bestehen. Bitte löschen Sie diese Beziehungen bevor Sie das Extra deaktivieren können."),
            tr("Statusmeldung"), platform::kInformation);
    return true;
}

void frmProdukteExtras::saveRecord() {
    SaveExtra({m_ui->txt_Extra->text(), artikel()}, key(), mark());
}

bool frmProdukteExtras::mayDelete() {
    if (!CanDeleteExtra(key()))
        return refuse(tr("Dieses Extra kann nicht gelöscht werden, da bereits Buchungen bestehen."),
                      tr("Löschen Extra"), platform::kInformation);
    // The firm's caption of this question, also for an extra.
    return confirm(tr("Möchten Sie dieses Extra wirklich löschen?"), tr("Löschen Gruppe"));
}

void frmProdukteExtras::deleteRecord() {
    DeleteExtra(key(), mark());
}
