#include "reporting/frmAuswertungenUmsatz.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "platform/chart/ChartView.h"
#include "store/SystemSettings.h"
#include "ui_frmAuswertungenUmsatz.h"
#include <algorithm>
#include <numeric>

using namespace modAuswertungenUmsatz;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using platform::Chart;

namespace {

enum Page : int { kTabelle, kBild, kStosszeiten };

constexpr auto kWochentage = {QT_TRANSLATE_NOOP("frmAuswertungenUmsatz", "Montag"),
                              QT_TRANSLATE_NOOP("frmAuswertungenUmsatz", "Dienstag"),
                              QT_TRANSLATE_NOOP("frmAuswertungenUmsatz", "Mittwoch"),
                              QT_TRANSLATE_NOOP("frmAuswertungenUmsatz", "Donnerstag"),
                              QT_TRANSLATE_NOOP("frmAuswertungenUmsatz", "Freitag"),
                              QT_TRANSLATE_NOOP("frmAuswertungenUmsatz", "Samstag"),
                              QT_TRANSLATE_NOOP("frmAuswertungenUmsatz", "Sonntag")};

store::Rows periods(int count, const std::function<std::vector<common::Value>(size_t)>& row) {
    store::Rows rows{{{u"Periode"_s}, {u"Ccy"_s}, {u"Umsatz"_s, store::ColumnType::Double}}, {}};
    for (int i = 0; i < count; ++i)
        rows.rows.push_back(row(size_t(i)));
    return rows;
}

/// An empty picture where there is nothing to count.
Chart orNothing(Chart chart) {
    const auto& values = chart.series[0].values;
    if (std::all_of(values.begin(), values.end(), [](double count) { return count == 0; }))
        return {.title = chart.title};
    return chart;
}

std::vector<double> valuesOf(const Perioden& sums) {
    return {sums.begin(), sums.end()};
}

} // namespace

frmAuswertungenUmsatz::frmAuswertungenUmsatz(const platform::Services& services, QWidget* parent) :
    frmAuswertung(services, parent), m_ui(std::make_unique<Ui::frmAuswertungenUmsatz>()), m_ccy(SysCurrency) {
    m_ui->setupUi(this);
    setUpControls();
    fillKurierCombo(*m_ui->combo_Kurier, true);
    m_ui->lbl_Ccy->setText(tr("Total Umsatz: ") + m_ccy);
    onChange({m_ui->combo_Kurier, m_ui->opt_Umsatz, m_ui->opt_MWSt}, [this] { showTables(); });
    setUpTables();
    setUpPeakTimes();
}

frmAuswertungenUmsatz::~frmAuswertungenUmsatz() = default;

void frmAuswertungenUmsatz::setUpTables() {
    for (const auto& [grid, rows, form] : {std::tuple{m_ui->TagesUmsatzGrid, &m_tage, u"DD/MMM/YYYY"_s},
                                           std::tuple{m_ui->MonatsUmsatzGrid, &m_monate, QString()},
                                           std::tuple{m_ui->JahresUmsatzGrid, &m_jahre, QString()}}) {
        setUpGrid(*grid, *rows);
        grid->formatColumns({{tr("Periode"), 1400, Qt::AlignLeft, form},
                             {m_ccy, 700, Qt::AlignHCenter},
                             {tr("Umsatz"), 1500, Qt::AlignRight, u"#,##0.00"_s, {}, true}});
        grid->stretchColumn(0);
    }
    for (platform::ChartView* picture :
         {m_ui->TagesBild, m_ui->MonatsBild, m_ui->JahresBild, m_ui->StundenBild, m_ui->WochentagsBild}) {
        picture->setServices(services());
        picture->setEmptyText(m_ui->TagesUmsatzGrid->emptyText());
    }
}

void frmAuswertungenUmsatz::setUpPeakTimes() {
    m_ui->combo_Wochentag->addItem(tr("Alle Tage"));
    for (const char* day : kWochentage)
        m_ui->combo_Wochentag->addItem(tr(day));
    connectGuarded(Origin::User, m_ui->combo_Wochentag, &QComboBox::activated, this, [this] { showHours(); });
    connectGuarded(Origin::User, m_ui->Ansicht, &QTabWidget::currentChanged, this, [this](int page) {
        if (page == kStosszeiten)
            reading([this](const platform::Progress& progress) {
                showPeakTimes(readPeakTimes(von(), bis(), progress));
            });
    });
}

Auswahl frmAuswertungenUmsatz::auswahl() const {
    return {m_ui->opt_MWSt->isChecked(), kurierOf(*m_ui->combo_Kurier)};
}

bool frmAuswertungenUmsatz::peakTimesShown() const {
    return m_ui->Ansicht->currentIndex() == kStosszeiten;
}

void frmAuswertungenUmsatz::activated() {
    showTables();
}

void frmAuswertungenUmsatz::showTables() {
    reading([this](const platform::Progress& progress) {
        Tabellen tables = LoadUmsatzTabellen(auswahl(), progress);
        // What is typed in the date fields counts once it is asked for.
        if (peakTimesShown())
            showPeakTimes(readPeakTimes(m_stosszeiten.von, m_stosszeiten.bis, progress));
        m_tabellen = std::move(tables);
        m_was = (m_ui->opt_MWSt->isChecked() ? tr("Mehrwertsteuer") : tr("Umsatz")) +
                kurierText(*m_ui->combo_Kurier);
        m_tage.show(periods(kTage, [this](size_t i) -> std::vector<common::Value> {
            if (i >= m_tabellen.tage.size())
                return {{}, m_ccy, {}};
            const Tag& tag = m_tabellen.tage[i];
            return {common::Serial{double(tag.lng_BestellDatum)}, m_ccy, tag.TotalUmsatz};
        }));
        for (const auto& [rows, names, sums] :
             {std::tuple{&m_monate, &m_tabellen.monatsPerioden, &m_tabellen.monate},
              std::tuple{&m_jahre, &m_tabellen.jahresPerioden, &m_tabellen.jahre}})
            rows->show(periods(kPerioden, [&, names = names, sums = sums](size_t i) {
                return std::vector<common::Value>{names->at(qsizetype(i)), m_ccy, (*sums)[i]};
            }));
        showPictures();
    });
}

void frmAuswertungenUmsatz::showPictures() {
    Chart days{.title = tr("%1, nach Tagen").arg(m_was), .unit = m_ccy, .series = {{m_was, {}}}};
    for (auto tag = m_tabellen.tage.rbegin(); tag != m_tabellen.tage.rend(); ++tag) {
        days.labels << common::formatDate(double(tag->lng_BestellDatum), u"DD/MM/YY");
        days.series[0].values.push_back(tag->TotalUmsatz);
    }
    m_ui->TagesBild->setChart(days);
    const QStringList& years = m_tabellen.jahresPerioden;
    Chart months{.title = tr("%1, nach Monaten").arg(m_was),
                 .unit = m_ccy,
                 .series = {{years[kPerioden - 2], valuesOf(m_tabellen.monateVorjahr)},
                            {years[kPerioden - 1], valuesOf(m_tabellen.monateDiesesJahr)}}};
    for (const QString& month : std::as_const(m_tabellen.monatsPerioden))
        months.labels << month.section(u'-', 0, 0);
    m_ui->MonatsBild->setChart(months);
    m_ui->JahresBild->setChart({.title = tr("%1, nach Jahren").arg(m_was),
                                .unit = m_ccy,
                                .labels = years,
                                .series = {{m_was, valuesOf(m_tabellen.jahre)}}});
}

void frmAuswertungenUmsatz::showFigures() {
    reading([this](const platform::Progress& progress) {
        const double sum = LoadUmsatzPeriode(von(), bis(), auswahl(), progress);
        if (peakTimesShown())
            showPeakTimes(readPeakTimes(von(), bis(), progress));
        m_ui->lbl_TotalPreis->setText(total(sum));
    });
}

frmAuswertungenUmsatz::PeakTimes
frmAuswertungenUmsatz::readPeakTimes(qint64 von, qint64 bis, const platform::Progress& progress) const {
    return {von, bis, kurierText(*m_ui->combo_Kurier),
            LoadStosszeiten(von, bis, kurierOf(*m_ui->combo_Kurier), progress)};
}

QString frmAuswertungenUmsatz::PeakTimes::heading() const {
    return common::formatDate(double(von), u"DD/MM/YYYY") + u" - "_s +
           common::formatDate(double(bis), u"DD/MM/YYYY") + kurier;
}

void frmAuswertungenUmsatz::showPeakTimes(const PeakTimes& counted) {
    m_stosszeiten = counted;
    Chart days{.title = tr("Wochentage, %1").arg(counted.heading()),
               .form = u"0"_s,
               .series = {{tr("Bestellungen"), {}}}};
    for (size_t day = 0; day < counted.anzahl.size(); ++day) {
        const auto& hours = counted.anzahl[day];
        days.labels << m_ui->combo_Wochentag->itemText(int(day) + 1).left(2);
        days.series[0].values.push_back(std::accumulate(hours.begin(), hours.end(), 0.0));
    }
    m_ui->WochentagsBild->setChart(orNothing(days));
    showHours();
}

void frmAuswertungenUmsatz::showHours() {
    const int chosen = m_ui->combo_Wochentag->currentIndex() - 1;
    Chart hours{.title =
                    tr("Stunden, %1, %2").arg(m_ui->combo_Wochentag->currentText(), m_stosszeiten.heading()),
                .form = u"0"_s,
                .series = {{tr("Bestellungen"), std::vector<double>(24)}}};
    for (int hour = 0; hour < 24; ++hour) {
        hours.labels << QString::number(hour);
        for (int day = 0; day < 7; ++day)
            if (chosen < 0 || chosen == day)
                hours.series[0].values[size_t(hour)] += m_stosszeiten.anzahl[size_t(day)][size_t(hour)];
    }
    m_ui->StundenBild->setChart(orNothing(hours));
}

void frmAuswertungenUmsatz::printFigures() {
    // Given up when the screen opened.
    if (m_was.isEmpty())
        showTables();
    if (m_was.isEmpty())
        return;
    print(u"rep_Umsatz.rpt"_s, m_was,
          [this](const platform::Progress& progress) { FillPrintUmsatz(m_tabellen, m_ccy, progress); });
}

std::vector<platform::SheetTable> frmAuswertungenUmsatz::sheets() const {
    return {platform::sheetOf(*m_ui->TagesUmsatzGrid, tr("Tage"), m_was),
            platform::sheetOf(*m_ui->MonatsUmsatzGrid, tr("Monate"), m_was),
            platform::sheetOf(*m_ui->JahresUmsatzGrid, tr("Jahre"), m_was)};
}
