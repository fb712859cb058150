#include "Firms.h"
#include "Roads.h"
#include "StartTime.h"
#include "Table.h"
#include "shell/AppStyle.h"
#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr int kStarts = 9;
constexpr int kBackups = 3;

struct Plan {
    QString folder;
    double scale;
    int rounds, samples;
    /// Part of a road's name.
    std::string only;
    QString document;
};

Plan planOf(const QApplication& application) {
    QCommandLineParser parser;
    parser.addPositionalArgument(u"folder"_s, u"Where the installations are made and kept."_s);
    parser.addOption({u"rounds"_s, u"Rounds over both installations."_s, u"n"_s, u"5"_s});
    parser.addOption({u"samples"_s, u"Samples a round and road."_s, u"n"_s, u"100"_s});
    parser.addOption({u"scale"_s, u"Size of the large installation."_s, u"n"_s, u"1"_s});
    parser.addOption(
        {u"only"_s, u"Only the roads whose names contain the text, for a profiler."_s, u"text"_s});
    parser.addOption(
        {u"markdown"_s, u"Also puts the table into this document, between its marks."_s, u"file"_s});
    parser.addHelpOption();
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);
    return {parser.positionalArguments().front(),  parser.value(u"scale"_s).toDouble(),
            parser.value(u"rounds"_s).toInt(),     parser.value(u"samples"_s).toInt(),
            parser.value(u"only"_s).toStdString(), parser.value(u"markdown"_s)};
}

std::vector<bench::Title> measureFirm(const bench::Firm& firm, const Plan& plan, bench::Figures& figures) {
    bench::Roads firmRoads(firm.folder, firm.copy);
    std::vector<bench::Title> titles;
    for (std::vector<bench::Road> roads : firmRoads.groups()) {
        std::erase_if(
            roads, [&](const bench::Road& road) { return road.name.find(plan.only) == std::string::npos; });
        bench::measure(roads, plan.samples, figures);
        for (const bench::Road& road : roads)
            titles.push_back({road.name, road.aim, bool(road.raw)});
    }
    return titles;
}

bool isFair(const bench::Firm& firm) {
    const std::string differences = bench::Roads(firm.folder, firm.copy).differences();
    if (!differences.empty())
        std::fprintf(stderr, "The two sides do not run the same statements:\n%s", differences.c_str());
    return differences.empty();
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 3 && std::strcmp(argv[1], "--start") == 0)
        return bench::showProgram(argc, argv, QString::fromLocal8Bit(argv[2]));
    QApplication application(argc, argv);
    shell::applyStyle(application);
    const Plan plan = planOf(application);

    const bench::Firm large = bench::prepareFirm(plan.folder + u"/large"_s, u"Large"_s, plan.scale);
    const bench::Firm tenth = bench::prepareFirm(plan.folder + u"/tenth"_s, u"Tenth"_s, plan.scale / 10);
    if (!isFair(large))
        return 1;
    bench::Results results;
    for (int round = 0; round < plan.rounds; ++round) {
        results.titles = measureFirm(large, plan, results.large);
        measureFirm(tenth, plan, results.tenth);
    }
    results.startLarge = bench::measureStart(large.folder, kStarts);
    results.startTenth = bench::measureStart(tenth.folder, kStarts);
    constexpr std::string_view kBackup = "Backup";
    if (kBackup.find(plan.only) != std::string_view::npos)
        results.backup = bench::measureBackup(large.folder, large.copy, kBackups);
    const QString table = bench::table(results);
    std::printf("%s", qPrintable(table));
    return plan.document.isEmpty() || bench::writeInto(plan.document, table) ? 0 : 1;
}
