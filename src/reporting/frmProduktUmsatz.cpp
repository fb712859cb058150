#include "reporting/frmProduktUmsatz.h"
#include "platform/chart/ChartView.h"
#include "store/SystemSettings.h"
#include <QRadioButton>

using namespace Qt::StringLiterals;
using modProduktUmsatz::Gliederung;

platform::DataGrid& frmProduktUmsatz::grid() const {
    return *findChild<platform::DataGrid*>(u"ArtikelGruppenDetailsGrid"_s);
}

void frmProduktUmsatz::setUpUmsatz(const QString& name, const QString& umsatz, const QString& mwst) {
    // The currency stands with the amounts.
    const QString money = u"0.00 \"%1\""_s.arg(QString(SysCurrency).remove(u'"'));
    setUpGrid(grid(), m_rows);
    grid().formatColumns({{name, 3000},
                          {tr("Menge"), 1500, Qt::AlignRight, {}, {}, true},
                          {},
                          {umsatz, 2200, Qt::AlignRight, money, {}, true},
                          {mwst, mwst.isEmpty() ? 0 : 2200, Qt::AlignRight, money, {}, true}});
    auto& picture = *findChild<platform::ChartView*>(u"Bild"_s);
    picture.setServices(services());
    picture.setEmptyText(grid().emptyText());
}

Gliederung frmProduktUmsatz::gliederung() const {
    return findChild<QRadioButton*>(u"opt_Kategorien"_s)->isChecked() ? Gliederung::Kategorien
                                                                      : Gliederung::Produkte;
}

void frmProduktUmsatz::showUmsatz(const modProduktUmsatz::Umsatz& figures, const QString& heading) {
    platform::Chart chart{.title = heading,
                          .unit = SysCurrency,
                          .kind = platform::Chart::Ranked,
                          .series = {{tr("Umsatz"), {}}}};
    for (const auto& row : figures.rows.rows) {
        chart.labels << (row[0].isNull() ? tr("(gelöscht)") : row[0].toText());
        chart.series[0].values.push_back(row[3].toDouble());
    }
    m_rows.show(figures.rows);
    findChild<platform::ChartView*>(u"Bild"_s)->setChart(std::move(chart));
    m_heading = heading;
    m_ansicht = gliederung() == Gliederung::Kategorien ? tr("Kategorien") : tr("Produkte");
}

std::vector<platform::SheetTable> frmProduktUmsatz::sheets() const {
    return {platform::sheetOf(grid(), m_ansicht.isEmpty() ? tr("Produkte") : m_ansicht, m_heading)};
}
