#include "platform/line/LineFactory.h"
#include "platform/line/CallMonitorLine.h"
#include "platform/line/CapiLine.h"
#include "platform/line/NoLine.h"
#include "platform/line/SipLine.h"

namespace platform {
namespace {

std::unique_ptr<BasicCAPI32> lineOf(const LineSettings& settings) {
    switch (settings.kind) {
    case LineSettings::Kind::Sip:
        return std::make_unique<SipLine>(settings.sip, settings.retry);
    case LineSettings::Kind::Capi:
        return std::make_unique<CapiLine>(settings.capi, settings.retry);
    case LineSettings::Kind::Monitor:
        return std::make_unique<CallMonitorLine>(settings.monitor, settings.retry);
    case LineSettings::Kind::Unknown:
        return std::make_unique<NoLine>(
            QStringLiteral("Die Telefonleitung \"%1\" in tavolino.ini ist unbekannt.")
                .arg(settings.kindText));
    case LineSettings::Kind::None:
        break;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<BasicCAPI32> createLine(const LineSettings& settings) {
    auto line = lineOf(settings);
    if (line)
        line->setCountryCode(settings.countryCode);
    return line;
}

} // namespace platform
