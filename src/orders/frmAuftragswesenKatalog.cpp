// The catalogue of the order screen: categories, products, extras, quantities, and the menus of the cells.
#include "common/Convert.h"
#include "common/Guard.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "orders/frmPopUpMenu.h"
#include "platform/Dialogs.h"
#include "ui_frmAuftragswesenAuftragserfassung.h"
#include <QEvent>
#include <QMdiSubWindow>
#include <QSignalBlocker>
#include <cmath>

using namespace Qt::StringLiterals;
using orders::Col;

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
        if (!m_menus->mnKurier.isEmpty())
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
    if (percent && std::abs(*percent) <= orders::kLargestDiscountPercent)
        m_order.SetRabattBestellung(*percent);
    else
        tell(tr("Kein gültiger Rabatt-Satz."), tr("Ungültiger Rabatt"), platform::kStop);
}
