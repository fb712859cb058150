#include "maintenance/mod_SoftwareUpdate.h"
#include "common/Clock.h"
#include "maintenance/SystemNews.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/net/Internet.h"
#include "platform/net/PostURL.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <QCoreApplication>
#include <QUrl>

using namespace Qt::StringLiterals;
using common::kProgramVersion;
using common::Version;
using maintenance::systemNews;
using platform::Services;

namespace mod_SoftwareUpdate {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("mod_SoftwareUpdate", text);
}

QString softwareTitle() {
    return tr("Software aktualisieren");
}

QString phoneBookTitle() {
    return tr("Telefonbuch aktualisieren");
}

QString deadlineTitle() {
    return tr("Software Aktualisierung");
}

bool asks(const Services& services, const QString& question, const QString& title) {
    return services.dialogs.MsgBox(question, platform::kYesNo, title) == platform::kAnswerYes;
}

void tell(const Services& services, const QString& text, const QString& title) {
    services.dialogs.MsgBox(text, platform::kInformation, title);
}

void endProgram(const Services& services, const QString& text, const QString& title) {
    tell(services, text, title);
    services.navigation.endProgram();
}

/// "" without an answer, which has been told then.
QString ask(const Services& services, const QString& script, const QString& title) {
    QString problem;
    const QString answer =
        platform::PostURL(services, services.internet.endpoints().systemAddress(script), &problem);
    if (!problem.isEmpty())
        tell(services, problem, title);
    return problem.isEmpty() ? answer : QString();
}

qint64 today() {
    return qint64(common::clock::today());
}

bool mayStillRun() {
    return kProgramVersion.asNumber() == systemNews().UpdateFrist.asNumber() &&
           systemNews().UpdateFristDatum >= today();
}

void forceUpdate(const Services& services) {
    const bool agrees = asks(services,
                             tr("Es steht eine neue Software Version zum herunterladen bereit. Damit Sie die "
                                "Software weiter benutzen können, müssen Sie zuerst die Software "
                                "aktualisieren. Möchten Sie die Software jetzt aktualisieren."),
                             deadlineTitle());
    if (!isEntitled())
        return endProgram(services,
                          tr("Damit Sie die Software Aktualisierung vornehmen können, müssen Sie als "
                             "Administrator angemeldet sein."),
                          deadlineTitle());
    // The title and the sentence are spelled so on purpose.
    const QString title = tr("Software Aktualisiierung");
    if (!agrees)
        return endProgram(services,
                          tr("Sie möchten die Software nicht aktualisiert. Die Applikation wird jetzt "
                             "geschlossen."),
                          title);
    services.navigation.showScreen(kForcedScreen);
    endProgram(services,
               tr("Sie haben die Software nicht aktualisiert. Die Applikation wird jetzt geschlossen."),
               title);
}

void checkPhoneBook(const Services& services) {
    const auto version = maintenance::readPhoneBookVersion(
        ask(services, u"TavolinoNet_PhoneBookVersion.asp"_s, phoneBookTitle()));
    if (!version)
        return;
    if (!IsPhoneBookCurrent(*version))
        return ShowPhoneBookUpdate(services);
    tell(services, tr("Das Telefonbuch ist auf dem aktuellsten Stand."), phoneBookTitle());
}

/// What was told at the start does not hold for a version that came out since. Without an answer nobody is
/// forced.
void askForDeadline(const Services& services, const Version& newest) {
    auto& news = systemNews();
    if (!isBehind(newest) || (news.newest && news.newest->asNumber() == newest.asNumber()))
        return;
    QString problem;
    const auto told = maintenance::readSystemNews(
        platform::PostURL(services, startAddress(services.internet.endpoints()), &problem));
    if (problem.isEmpty() && told.newest)
        news = told;
    else
        news.newest.reset();
}

} // namespace

bool isEntitled() {
    return SysAnmeldungBenutzer == 0 || UserAdministrator != 0;
}

bool CheckForUpdates(const Services& services) {
    const QString missing = services.internet.endpoints().missingForSystem();
    if (!missing.isEmpty()) {
        tell(services, missing, softwareTitle());
        return false;
    }
    const auto newest =
        maintenance::readVersion(ask(services, u"TavolinoNet_SoftwareVersion.asp"_s, softwareTitle()));
    if (!newest)
        return false;
    askForDeadline(services, *newest);
    if (OfferSoftwareUpdate(services, *newest)) {
        tell(services, tr("Die Software ist auf dem aktuellsten Stand."), softwareTitle());
        checkPhoneBook(services);
    }
    return true;
}

bool isBehind(const Version& newest) {
    return kProgramVersion.asNumber() < newest.asNumber();
}

Standing CheckSoftwareUpdate(const Services& services, const Version& newest) {
    if (!isBehind(newest))
        return Standing::Current;
    if (systemNews().newest && !mayStillRun()) {
        forceUpdate(services);
        return Standing::Forced;
    }
    if (systemNews().newest)
        tell(services,
             tr("Sie haben noch %1 Tage Zeit, um Ihre Software zu aktualisieren.")
                 .arg(systemNews().UpdateFristDatum - today()),
             deadlineTitle());
    return Standing::Behind;
}

bool OfferSoftwareUpdate(const Services& services, const Version& newest) {
    const Standing standing = CheckSoftwareUpdate(services, newest);
    if (standing == Standing::Behind)
        ShowSoftwareUpdate(services);
    return standing == Standing::Current;
}

void ShowSoftwareUpdate(const Services& services) {
    if (isEntitled() && asks(services,
                             tr("Eine neue Version steht zum Herunterladen bereit. Möchten Sie Ihre Software "
                                "jetzt aktualisieren?"),
                             softwareTitle()))
        services.navigation.showScreen(kSoftwareScreen);
}

void ShowPhoneBookUpdate(const Services& services) {
    if (isEntitled() && asks(services,
                             tr("Eine neue Telefonbuch Version steht zum Herunterladen bereit. Möchten Sie "
                                "Ihr Telefonbuch jetzt aktualisieren?"),
                             phoneBookTitle()))
        services.navigation.showScreen(kPhoneBookScreen);
}

qint64 phoneBookVersion() {
    const store::OpenRecordset rows(RsPhone, u"SELECT * FROM tbl_PhoneBookVersion ORDER BY ID DESC;"_s,
                                    ConnPhone);
    return rows->Eof() ? 0 : rows->Fields(u"lng_PhoneBookVersion").toLong();
}

bool IsPhoneBookCurrent(qint64 version) {
    return phoneBookVersion() >= version;
}

QString startAddress(const platform::Endpoints& ends) {
    return ends.systemAddress(u"TavolinoNet_Start.asp?id1="_s) +
           QString::fromLatin1(QUrl::toPercentEncoding(ends.installation)) + u"&id2="_s +
           kProgramVersion.text();
}

} // namespace mod_SoftwareUpdate
