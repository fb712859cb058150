#include "reporting/frmAuswertungenUmsatzProduktePerKunde.h"
#include "masterdata/modVerwaltungKunden.h"
#include "reporting/frmKundenWahl.h"
#include "reporting/modAuswertungenUmsatzProduktePerKunde.h"
#include "store/SystemSettings.h"
#include "ui_frmAuswertungenUmsatzProduktePerKunde.h"

using namespace Qt::StringLiterals;
using namespace modAuswertungenUmsatzProduktePerKunde;
using modProduktUmsatz::Gliederung;

frmAuswertungenUmsatzProduktePerKunde::frmAuswertungenUmsatzProduktePerKunde(
    const platform::Services& services, QWidget* parent) :
    frmProduktUmsatz(services, parent),
    m_ui(std::make_unique<Ui::frmAuswertungenUmsatzProduktePerKunde>()) {
    m_ui->setupUi(this);
    setUpControls();
    m_kunde = new frmKundenWahl(*this);
    setUpUmsatz(tr("Produkte"), tr("Total"));
    m_ui->lbl_Ccy->setText(tr("Total Umsatz: ") + SysCurrency);
}

frmAuswertungenUmsatzProduktePerKunde::~frmAuswertungenUmsatzProduktePerKunde() = default;

void frmAuswertungenUmsatzProduktePerKunde::CalculateUmsatzArtikelandGruppenUmsatz() {
    const qint64 id = m_kunde->lng_KundenID();
    if (id < 0)
        return;
    reading([&](const platform::Progress& progress) {
        const auto figures =
            modProduktUmsatz::LoadProduktUmsatz(BestellungenSql(id, von(), bis()), gliederung(), progress);
        m_gezeigt = id;
        showUmsatz(figures, modVerwaltungKunden::GetKundeName(id) + u", "_s + vonBis());
        // The total of the categories holds products whose category is gone, which the list leaves out.
        m_ui->lbl_TotalPreis->setText(
            total(gliederung() == Gliederung::Kategorien ? figures.umsatzVorhandener : figures.umsatz));
    });
}

void frmAuswertungenUmsatzProduktePerKunde::printFigures() {
    if (m_gezeigt != m_kunde->lng_KundenID())
        CalculateUmsatzArtikelandGruppenUmsatz();
    if (m_gezeigt < 0 || m_gezeigt != m_kunde->lng_KundenID())
        return;
    print(u"rep_UmsatzKundenProdukte.rpt"_s, tr("Umsatz Produkte per Kunde"),
          [this](const platform::Progress& progress) {
              FillPrintKundenArtikelUmsatz(umsatzRows(), vonBis(), m_kunde->adresse(), progress);
          });
}
