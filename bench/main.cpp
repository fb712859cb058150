#include "Firms.h"
#include "Roads.h"
#include "shell/AppStyle.h"
#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

struct Results {
    bench::Figures large, tenth, largePainted, tenthPainted;
};

struct Plan {
    int samples;
    std::string only;
};

std::vector<bench::Road> chosen(std::vector<bench::Road> roads, const Plan& plan) {
    std::erase_if(roads,
                  [&](const bench::Road& road) { return road.name.find(plan.only) == std::string::npos; });
    return roads;
}

void measureFirm(const bench::Firm& firm, const Plan& plan, bench::Figures& figures,
                 bench::Figures& painted) {
    bench::Roads roads(firm.folder, firm.copy);
    bench::measure(chosen(roads.roads(), plan), plan.samples, figures);
    bench::measure(chosen(roads.painted(), plan), plan.samples, painted);
}

bool isFair(const bench::Firm& firm) {
    const std::string differences = bench::Roads(firm.folder, firm.copy).differences();
    if (!differences.empty())
        std::fprintf(stderr, "The two sides do not run the same statements:\n%s", differences.c_str());
    return differences.empty();
}

void print(const Results& results) {
    for (const auto& [name, large] : results.large) {
        const bench::Samples& tenth = results.tenth.at(name);
        const double ours = bench::median(large.ours) / 1000;
        const double raw = bench::median(large.raw) / 1000;
        std::printf("%-44s %9.1f us %9.1f us  %5.2f   x10 %5.2f (raw %.2f)\n", name.c_str(), ours, raw,
                    ours / raw, ours / (bench::median(tenth.ours) / 1000),
                    raw / (bench::median(tenth.raw) / 1000));
    }
    for (const auto& [name, large] : results.largePainted)
        std::printf("%-44s %9.1f us   x10 %5.2f\n", name.c_str(), bench::median(large.ours) / 1000,
                    bench::median(large.ours) / bench::median(results.tenthPainted.at(name).ours));
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addPositionalArgument(u"folder"_s, u"Where the installations are made and kept."_s);
    parser.addOption({u"rounds"_s, u"Rounds over both installations."_s, u"n"_s, u"5"_s});
    parser.addOption({u"samples"_s, u"Samples a round and road."_s, u"n"_s, u"20"_s});
    parser.addOption({u"scale"_s, u"Size of the large installation."_s, u"n"_s, u"1"_s});
    parser.addOption(
        {u"only"_s, u"Only the roads whose names contain the text, for a profiler."_s, u"text"_s});
    parser.addHelpOption();
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);

    const QString work = parser.positionalArguments().front();
    const double scale = parser.value(u"scale"_s).toDouble();
    const bench::Firm large = bench::prepareFirm(work + u"/large"_s, u"Large"_s, scale);
    const bench::Firm tenth = bench::prepareFirm(work + u"/tenth"_s, u"Tenth"_s, scale / 10);
    if (!isFair(large))
        return 1;
    const Plan plan{parser.value(u"samples"_s).toInt(), parser.value(u"only"_s).toStdString()};
    Results results;
    for (int round = 0; round < parser.value(u"rounds"_s).toInt(); ++round) {
        measureFirm(large, plan, results.large, results.largePainted);
        measureFirm(tenth, plan, results.tenth, results.tenthPainted);
    }
    print(results);
    return 0;
}
