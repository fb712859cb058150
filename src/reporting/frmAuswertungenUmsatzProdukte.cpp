#include "reporting/frmAuswertungenUmsatzProdukte.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "platform/form/DateFields.h"
#include "platform/form/FieldHelpers.h"
#include "reporting/modAuswertungenUmsatzProdukte.h"
#include "store/SystemSettings.h"
#include "ui_frmAuswertungenUmsatzProdukte.h"

using namespace Qt::StringLiterals;
using namespace modAuswertungenUmsatzProdukte;

frmAuswertungenUmsatzProdukte::frmAuswertungenUmsatzProdukte(const platform::Services& services,
                                                             QWidget* parent) :
    frmProduktUmsatz(services, parent),
    m_ui(std::make_unique<Ui::frmAuswertungenUmsatzProdukte>()) {
    m_ui->setupUi(this);
    setUpControls();
    setUpTimes();
    setUpUmsatz(tr("Gruppe"), tr("Umsatz"), tr("Mehrwertsteuer"));
    fillKurierCombo(*m_ui->combo_Kurier, true);
    m_ui->lbl_UmsatzCcy->setText(tr("Total Umsatz: ") + SysCurrency);
    m_ui->lbl_MwstCcy->setText(tr("Total Mehrwertsteuer:") + SysCurrency);
    onChange({m_ui->check_FiktivesDatum, m_ui->combo_Kurier, m_ui->opt_Produkte, m_ui->opt_Kategorien},
             [this] { CalculateUmsatzArtikelandGruppenUmsatz(); });
}

frmAuswertungenUmsatzProdukte::~frmAuswertungenUmsatzProdukte() = default;

void frmAuswertungenUmsatzProdukte::setUpTimes() {
    constexpr double kHour = 1 / 24.0;
    platform::setUpTimeField(*m_ui->txt_TimeFrom, *m_ui->cmdTimeVonBack, *m_ui->cmdTimeVonFwd);
    platform::setUpTimeField(*m_ui->txt_TimeTo, *m_ui->cmdTimeBisBack, *m_ui->cmdTimeBisFwd);
    platform::enterChain({m_ui->txt_TimeFrom, m_ui->txt_TimeTo, m_ui->txt_TimeFrom});
    m_ui->txt_TimeFrom->setText(u"00:00"_s);
    m_ui->txt_TimeTo->setText(common::formatDate(common::clock::now() - kHour, u"HH:MM"));
}

void frmAuswertungenUmsatzProdukte::enableTimes() {
    const bool fiktiv = m_ui->check_FiktivesDatum->isChecked();
    for (QWidget* control : std::initializer_list<QWidget*>{
             m_ui->lbl_TimeFrom, m_ui->cmdTimeVonBack, m_ui->txt_TimeFrom, m_ui->cmdTimeVonFwd,
             m_ui->lbl_TimeTo, m_ui->cmdTimeBisBack, m_ui->txt_TimeTo, m_ui->cmdTimeBisFwd})
        control->setEnabled(!fiktiv);
}

void frmAuswertungenUmsatzProdukte::CalculateUmsatzArtikelandGruppenUmsatz() {
    const bool fiktiv = m_ui->check_FiktivesDatum->isChecked();
    Auswahl auswahl{
        .von = von(), .bis = bis(), .fiktiv = fiktiv, .lng_KurierID = kurierOf(*m_ui->combo_Kurier)};
    if (!fiktiv) {
        auswahl.zeitVon = platform::timeOf(*m_ui->txt_TimeFrom);
        auswahl.zeitBis = platform::timeOf(*m_ui->txt_TimeTo);
    }
    reading([&](const platform::Progress& progress) {
        const auto figures =
            modProduktUmsatz::LoadProduktUmsatz(BestellungenSql(auswahl), gliederung(), progress);
        showUmsatz(figures, tr("Umsatz %1").arg(vonBis()) + kurierText(*m_ui->combo_Kurier));
        m_ui->lbl_UmsatzTotalPreis->setText(total(figures.umsatz));
        m_ui->lbl_MwstTotalPreis->setText(total(figures.mwst));
    });
    enableTimes();
}

void frmAuswertungenUmsatzProdukte::printFigures() {
    if (!umsatzRows().IsOpen())
        CalculateUmsatzArtikelandGruppenUmsatz();
    if (!umsatzRows().IsOpen())
        return;
    print(u"rep_UmsatzProdukte.rpt"_s, tr("Umsatz Produkte und Gruppen") + kurierText(*m_ui->combo_Kurier),
          [this](const platform::Progress& progress) {
              FillPrintArtikelUmsatz(umsatzRows(), vonBis(), progress);
          });
}
