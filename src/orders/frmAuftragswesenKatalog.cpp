// The catalogue of the order screen: categories, products, extras, quantities, and the menus of the cells.
#include "common/Convert.h"
#include "common/Guard.h"
#include "menus/frmPopUpMenu.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "platform/Dialogs.h"
#include "store/SystemSettings.h"
#include "ui_frmAuftragswesenAuftragserfassung.h"
#include <QEvent>
#include <QMdiSubWindow>
#include <QSignalBlocker>
#include <cmath>

using namespace Qt::StringLiterals;
using orders::Col;

namespace {

QString priceText(const orders::Artikel& artikel) {
    return common::formatNumber(artikel.preis, u"0.00");
}

} // namespace

void frmAuftragswesenAuftragserfassung::combo_PreisGruppe_Click() {
    m_order.PreisGruppe = m_ui->combo_PreisGruppe->currentIndex() + 1;
    QTabBar* tabs = m_ui->TabStripArtikel;
    {
        const QSignalBlocker quiet(tabs);
        while (tabs->count() > 0)
            tabs->removeTab(0);
        for (const auto& kategorie : modAuftragswesenAuftragserfassung::LoadKategorien()) {
            const int tab = tabs->addTab(QString(kategorie.txt_ProduktGruppe).replace(u'&', u"&&"_s));
            tabs->setTabData(tab, kategorie.lng_ID);
        }
    }
    TabStripArtikel_Click();
}

void frmAuftragswesenAuftragserfassung::refreshCatalogue() {
    QTabBar* tabs = m_ui->TabStripArtikel;
    const QVariant kategorie = tabs->tabData(tabs->currentIndex());
    combo_PreisGruppe_Click();
    for (int tab = 1; tab < tabs->count(); ++tab)
        if (tabs->tabData(tab) == kategorie)
            tabs->setCurrentIndex(tab);
}

void frmAuftragswesenAuftragserfassung::followStations(store::Topic topic) {
    if (topic == store::Topic::Settings)
        showSettings();
    if (topic == store::Topic::Catalogue)
        followCatalogue();
}

void frmAuftragswesenAuftragserfassung::followCatalogue() {
    m_menus->ForgetKuriere();
    m_ui->ProdukteGrid->refreshInPlace([this] { refreshCatalogue(); });
    m_ui->ExtrasGrid->refreshInPlace([this] { DataControlExtras.Refresh(); });
}

void frmAuftragswesenAuftragserfassung::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (event->type() == QEvent::ParentChange && frame)
        common::connectGuarded(common::Origin::User, frame, &QMdiSubWindow::aboutToActivate, this, [this] {
            if (std::exchange(m_wasInFront, true)) {
                showSettings();
                refreshCatalogue();
            }
        });
}

void frmAuftragswesenAuftragserfassung::TabStripArtikel_Click() {
    const int tab = m_ui->TabStripArtikel->currentIndex();
    std::optional<qint64> kategorie;
    if (tab >= 0)
        kategorie = m_ui->TabStripArtikel->tabData(tab).toLongLong();
    DataControlProdukte.setRecordSource(
        modAuftragswesenAuftragserfassung::ProdukteSql(kategorie, m_order.PreisGruppe));
    DataControlProdukte.Refresh();
    FormatGridProdukte();
}

void frmAuftragswesenAuftragserfassung::FormatGridProdukte() {
    m_ui->ProdukteGrid->formatColumns({{}, {tr("Kurzzeichen"), 1800}});
    m_ui->ProdukteGrid->stretchColumn(1);
}

void frmAuftragswesenAuftragserfassung::FormatGridExtras(qint64 produktId) {
    DataControlExtras.setRecordSource(modAuftragswesenAuftragserfassung::ExtrasSql(produktId));
    DataControlExtras.Refresh();
}

void frmAuftragswesenAuftragserfassung::showArtikel(bool isProdukt, int row) {
    const auto* grid = isProdukt ? m_ui->ProdukteGrid : m_ui->ExtrasGrid;
    std::optional<orders::Artikel> artikel;
    if (row >= 0)
        artikel = m_order.FindArtikel(isProdukt, grid->value(row, 0).toLong());
    QString text;
    if (artikel)
        text = SysCurrency + u' ' + priceText(*artikel) + u"   "_s + artikel->name;
    QLabel* label = m_ui->lbl_Artikel;
    label->setText(label->fontMetrics().elidedText(text, Qt::ElideRight, label->width()));
}

std::vector<platform::CellOffer> frmAuftragswesenAuftragserfassung::offers(platform::CellPlace at,
                                                                           const QString& typed) {
    constexpr int kMostOffers = 8;
    std::vector<platform::CellOffer> offers;
    if (at.column != Col::Kurzzeichen && at.column != Col::Bezeichnung)
        return offers;
    for (orders::Artikel& artikel : m_order.FindAngebote(at.row, at.column, typed, kMostOffers)) {
        const QStringList texts{artikel.kurzzeichen, artikel.name, priceText(artikel)};
        offers.push_back({texts, [this, row = at.row, angebot = std::move(artikel)] {
                              m_order.PutAngebot(row, angebot);
                          }});
    }
    return offers;
}

void frmAuftragswesenAuftragserfassung::ProdukteGrid_Pick(int row) {
    picked(m_order.PickProdukt(m_ui->ProdukteGrid->value(row, 0).toLong(), m_ui->ProdukteGrid->text(row, 1),
                               m_ui->combo_ProduktAnzahl->currentText().toDouble()),
           m_ui->combo_ProduktAnzahl);
}

void frmAuftragswesenAuftragserfassung::ExtrasGrid_Pick(int row) {
    picked(m_order.PickExtra(m_ui->ExtrasGrid->value(row, 0).toLong(), m_ui->ExtrasGrid->text(row, 1),
                             m_ui->combo_ExtraAnzahl->currentText().toDouble()),
           m_ui->combo_ExtraAnzahl);
}

void frmAuftragswesenAuftragserfassung::picked(int row, QComboBox* quantity) {
    if (row < 0)
        return;
    quantity->setCurrentIndex(0);
    m_ui->BestellungGrid->goTo({row, Col::Anzahl});
}

void frmAuftragswesenAuftragserfassung::showLine(int row) {
    m_ui->BestellungGrid->goTo({row, Col::Kurzzeichen});
    m_ui->BestellungGrid->setFocus(Qt::OtherFocusReason);
}

void frmAuftragswesenAuftragserfassung::stepQuantity(QComboBox* combo, int step) {
    combo->setCurrentIndex(qBound(0, combo->currentIndex() + step, combo->count() - 1));
}

void frmAuftragswesenAuftragserfassung::detailsMenu(int row, int column, const QPoint& globalPos) {
    const auto is = [&](orders::DetailCell cell) { return cell.row == row && cell.column == column; };
    if (is(orders::Detail::Konditionen)) {
        m_menus->mnKonditionen.popup(globalPos);
    } else if (is(orders::Detail::Kurier)) {
        m_menus->FillKurierMenuOnce();
        m_menus->mnKurier.popup(globalPos);
    }
}

void frmAuftragswesenAuftragserfassung::linesMenu(int row, const QPoint& globalPos) {
    m_MenuZeile = row;
    m_menus->mnBestellungLoschen.popup(globalPos);
}

void frmAuftragswesenAuftragserfassung::cmdRabatt_Click() {
    const QString answer =
        m_services.dialogs.InputBox(tr("Geben Sie den Rabatt in Prozenten an."), tr("Rabatt"), u"2"_s);
    const std::optional<double> percent = common::parseNumber(answer);
    constexpr double kLargestPercent = 1'000;
    if (!percent || std::abs(*percent) > kLargestPercent || !m_order.SetRabattBestellung(*percent))
        tell(tr("Kein gültiger Rabatt-Satz."), tr("Ungültiger Rabatt"), platform::kStop);
}
