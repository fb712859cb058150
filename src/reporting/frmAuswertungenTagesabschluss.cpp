#include "reporting/frmAuswertungenTagesabschluss.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/Dialogs.h"
#include "store/SystemSettings.h"
#include "ui_frmAuswertungenTagesabschluss.h"

using namespace modAuswertungenTagesabschluss;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using common::Value;

namespace {

const QString kAmount = u"#,##0.00"_s;

/// Rows of a table in memory.
template <typename Line>
store::Rows rowsOf(const std::vector<Line>& lines, std::vector<Value> (*row)(const Line& line)) {
    store::Rows rows;
    for (const Line& line : lines)
        rows.rows.push_back(row(line));
    return rows;
}

std::vector<Value> rowOf(const MwstZeile& line) {
    return {line.satz, line.netto, line.steuer, line.brutto};
}

std::vector<Value> rowOf(const Kondition& line) {
    return {line.txt_Konditionen, line.anzahl, line.umsatz, line.bar};
}

std::vector<Value> rowOf(const KurierAbrechnung& line) {
    return {line.kurier, line.anzahl, line.umsatz, line.bar};
}

QString dateText(double serial) {
    return common::formatDate(serial, u"DD/MM/YYYY HH:MM");
}

} // namespace

frmAuswertungenTagesabschluss::frmAuswertungenTagesabschluss(const platform::Services& services,
                                                             QWidget* parent) :
    frmAuswertung(services, parent),
    m_ui(std::make_unique<Ui::frmAuswertungenTagesabschluss>()) {
    m_ui->setupUi(this);
    setUpControls();
    setUpGrids();
    zeitraum().setDay(double(GeschaeftstagVon(common::clock::now())));
    onClick(u"cmdBar", [this] { turnBar(); });
    onClick(u"cmdPrintRolle", [this] { printOn(u"rep_TagesabschlussRolle.rpt"_s); });
    connectGuarded(Origin::User, m_ui->KonditionenGrid, &platform::DataGrid::rowActivated, this,
                   [this](int) { turnBar(); });
}

frmAuswertungenTagesabschluss::~frmAuswertungenTagesabschluss() = default;

void frmAuswertungenTagesabschluss::setUpGrids() {
    setUpGrid(*m_ui->UebersichtGrid, m_uebersicht);
    m_ui->UebersichtGrid->formatColumns({{tr("Bezeichnung"), 3500},
                                         {tr("Anzahl"), 900, Qt::AlignRight},
                                         {tr("Betrag"), 1600, Qt::AlignRight, kAmount}});
    m_ui->UebersichtGrid->stretchColumn(0);
    setUpGrid(*m_ui->MWStGrid, m_mwst);
    m_ui->MWStGrid->formatColumns({{tr("Satz %"), 1000, Qt::AlignLeft, u"0.0"_s},
                                   {tr("Netto"), 1500, Qt::AlignRight, kAmount, {}, true},
                                   {tr("Steuer"), 1500, Qt::AlignRight, kAmount, {}, true},
                                   {tr("Brutto"), 1500, Qt::AlignRight, kAmount, {}, true}});
    m_ui->MWStGrid->stretchColumn(0);
    setUpGrid(*m_ui->KonditionenGrid, m_konditionen);
    m_ui->KonditionenGrid->formatColumns({{tr("Konditionen"), 2500},
                                          {tr("Bestellungen"), 1200, Qt::AlignRight, {}, {}, true},
                                          {tr("Umsatz"), 1500, Qt::AlignRight, kAmount, {}, true},
                                          {tr("Bar"), 700, Qt::AlignHCenter, u"\"Nein\";\"Ja\""_s}});
    m_ui->KonditionenGrid->stretchColumn(0);
    setUpGrid(*m_ui->KuriereGrid, m_kuriere);
    m_ui->KuriereGrid->formatColumns({{tr("Kurier"), 1800},
                                      {tr("Bestellungen"), 1200, Qt::AlignRight, {}, {}, true},
                                      {tr("Mitgenommen"), 1500, Qt::AlignRight, kAmount, {}, true},
                                      {tr("Schuldet der Kasse"), 1700, Qt::AlignRight, kAmount, {}, true}});
    m_ui->KuriereGrid->stretchColumn(0);
}

void frmAuswertungenTagesabschluss::activated() {
    // Fresh figures of the span that is on show: what is typed meanwhile counts once it is asked for.
    m_spanne ? showSpan(*m_spanne) : showFigures();
}

void frmAuswertungenTagesabschluss::showFigures() {
    showSpan(Geschaeftstage(von(), bis()));
}

void frmAuswertungenTagesabschluss::showSpan(const Spanne& span) {
    reading([&](const platform::Progress& progress) {
        m_abschluss = LoadTagesabschluss(span, progress);
        m_spanne = span;
        m_zeitraum = tr("%1 bis %2").arg(dateText(span.von), dateText(span.bis));
        showAbschluss();
    });
}

store::Rows frmAuswertungenTagesabschluss::overview() const {
    QStringList cancelled;
    for (const qint64 number : m_abschluss.storniert)
        cancelled << QString::number(number);
    const MwstZeile taxes = m_abschluss.mwstTotal();
    const QString numbers = cancelled.isEmpty() ? QString() : tr(": Nr. %1").arg(cancelled.join(u", "_s));
    store::Rows rows;
    rows.rows = {{tr("Bestellungen"), m_abschluss.bestellungen, {}},
                 {tr("Storniert") + numbers, qint64(cancelled.size()), {}},
                 {tr("Umsatz %1").arg(SysCurrency), {}, m_abschluss.umsatz},
                 {tr("darin gewährter Rabatt"), {}, m_abschluss.rabatt},
                 {tr("Umsatz ohne Mehrwertsteuer"), {}, taxes.netto},
                 {tr("Mehrwertsteuer"), {}, taxes.steuer},
                 {tr("Bar in die Kasse"), {}, m_abschluss.bar()},
                 {tr("Nicht bar"), {}, m_abschluss.umsatz - m_abschluss.bar()}};
    return rows;
}

void frmAuswertungenTagesabschluss::showAbschluss() {
    m_ui->lbl_Zeitraum->setText(m_zeitraum);
    m_uebersicht.show(overview());
    m_mwst.show(rowsOf<MwstZeile>(m_abschluss.mwst, rowOf));
    m_konditionen.show(rowsOf<Kondition>(m_abschluss.konditionen, rowOf));
    m_kuriere.show(rowsOf<KurierAbrechnung>(m_abschluss.kuriere, rowOf));
}

void frmAuswertungenTagesabschluss::turnBar() {
    const int row = m_ui->KonditionenGrid->row();
    if (row < 0 || !m_spanne)
        return;
    const Kondition word = m_abschluss.konditionen.at(size_t(row));
    try {
        SetBar(word.txt_Konditionen, !word.bar);
    } catch (const common::RunTimeError& error) {
        // Nothing is half done, and the order desk goes on.
        services().dialogs.MsgBox(error.sentence(), platform::kOk + platform::kStop, windowTitle());
        return;
    }
    showSpan(*m_spanne);
    for (size_t i = 0; i < m_abschluss.konditionen.size(); ++i)
        if (m_abschluss.konditionen[i].txt_Konditionen == word.txt_Konditionen)
            m_ui->KonditionenGrid->setRow(int(i));
}

void frmAuswertungenTagesabschluss::printFigures() {
    printOn(u"rep_Tagesabschluss.rpt"_s);
}

void frmAuswertungenTagesabschluss::printOn(const QString& reportFile) {
    // Given up when the screen opened.
    if (!m_spanne)
        showFigures();
    if (!m_spanne)
        return;
    print(reportFile, tr("Tagesabschluss"), [this](const platform::Progress&) {
        FillPrintTagesabschluss(m_abschluss, m_zeitraum, SysCurrency);
    });
}

std::vector<platform::SheetTable> frmAuswertungenTagesabschluss::sheets() const {
    return {platform::sheetOf(*m_ui->UebersichtGrid, tr("Übersicht"), m_zeitraum),
            platform::sheetOf(*m_ui->MWStGrid, tr("Mehrwertsteuer"), m_zeitraum),
            platform::sheetOf(*m_ui->KonditionenGrid, tr("Konditionen"), m_zeitraum),
            platform::sheetOf(*m_ui->KuriereGrid, tr("Kuriere"), m_zeitraum)};
}
