#include "maintenance/PackageFetch.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/net/Signature.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QTimer>

using namespace Qt::StringLiterals;
using platform::Download;

namespace maintenance {
namespace {

constexpr qint64 kSignatureBytes = 4096;

QString folder() {
    return store::appPath() + u"/Internet/"_s;
}

/// Whatever stage it has come to.
void removePackage(const QString& name) {
    QDir packages(folder());
    for (const QString& file : packages.entryList({name, name + u".*"_s}, QDir::Files))
        packages.remove(file);
}

QString told(const Download& download) {
    const platform::WebProblem& problem = download.problem();
    const bool isOfFile = problem.number == common::kDiskFull || problem.number == common::kNotWritable;
    const QString what = isOfFile || download.hasBegun()
                             ? QString()
                             : u"An error occurred calling InternetOpenUrl function\n"_s;
    return u"%1: %2"_s.arg(problem.number).arg(what + problem.sentence);
}

} // namespace

PackageFetch::PackageFetch(Package package, const platform::Endpoints& server, QByteArray publicKey) :
    m_package(std::move(package)), m_server(server), m_publicKey(std::move(publicKey)),
    m_download(server.certificate, {.bytes = m_package.bytes}),
    m_signature(server.certificate, {.bytes = kSignatureBytes}) {
    connect(&m_download, &Download::progressed, this, &PackageFetch::progressed);
    connect(&m_download, &Download::ended, this, [this] { answered([this] { fetchSignature(); }); });
    connect(&m_signature, &Download::ended, this, [this] { answered([this] { readSignature(); }); });
}

PackageFetch::~PackageFetch() {
    *m_givenUp = true;
    if (m_check)
        m_check->wait();
    m_download.giveUp();
    m_signature.giveUp();
    if (!m_isTaken)
        removePackage(m_package.name);
}

void PackageFetch::removeLeftovers() {
    for (const QString& name : {kProgramPackage, kPhoneBookPackage})
        removePackage(name);
}

void PackageFetch::answered(const std::function<void()>& work) {
    if (!common::guarded(common::Origin::Answer, work))
        end(tr("Die Aktualisierung wurde abgebrochen."));
}

QString PackageFetch::file() const {
    return folder() + m_package.name;
}

QString PackageFetch::unverifiedFile() const {
    return file() + u".teil"_s;
}

QString PackageFetch::take() {
    m_isTaken = true;
    return file();
}

QString PackageFetch::signatureFile() const {
    return file() + u".sig"_s;
}

void PackageFetch::start() {
    if (m_publicKey.size() != platform::kPublicKeySize) {
        qWarning("%s: this program was built without a key to check it", qUtf8Printable(m_package.name));
        QTimer::singleShot(0, this, [this] {
            end(tr("Dieses Programm kann die Signatur einer Aktualisierung nicht prüfen und lädt deshalb "
                   "keine herunter."));
        });
        return;
    }
    QDir().mkpath(folder());
    removePackage(m_package.name);
    m_download.CopyURLToFile(m_server.systemAddress(m_package.name), unverifiedFile());
}

void PackageFetch::fetchSignature() {
    if (m_download.problem().number != 0)
        return end(told(m_download));
    m_signature.CopyURLToFile(m_server.systemAddress(m_package.name + u".sig"_s), signatureFile());
}

void PackageFetch::readSignature() {
    if (m_signature.isMissing())
        return refuse(u"there is no signature"_s);
    if (m_signature.problem().number != 0)
        return end(told(m_signature));
    QFile signature(signatureFile());
    if (!signature.open(QIODevice::ReadOnly))
        return refuse(u"the signature cannot be read"_s);
    const QByteArray text = signature.readAll();
    signature.remove();
    check(text);
}

/// Beside the user interface: a large file takes its time.
void PackageFetch::check(const QByteArray& signature) {
    Q_EMIT checking();
    const auto version = std::make_shared<std::optional<QString>>();
    m_check.reset(QThread::create([version, file = unverifiedFile(), signature, name = m_package.name,
                                   key = m_publicKey, givenUp = m_givenUp] {
        *version = platform::signedVersion(file, signature, name, key, givenUp.get());
    }));
    connect(m_check.get(), &QThread::finished, this,
            [this, version] { answered([this, version] { checked(*version); }); });
    m_check->start();
}

void PackageFetch::checked(const std::optional<QString>& version) {
    if (!version)
        return refuse(u"the signature is not valid"_s);
    if (!m_package.isNewer(*version))
        return refuse(u"version %1 is not newer"_s.arg(*version));
    putInPlace();
}

void PackageFetch::putInPlace() {
    QFile package(unverifiedFile());
    if (package.rename(file()))
        return end({});
    qWarning("%s: %s", qUtf8Printable(m_package.name), qUtf8Printable(package.errorString()));
    end(tr("Die Datei \"%1\" lässt sich nicht schreiben.").arg(m_package.name));
}

void PackageFetch::refuse(const QString& why) {
    qWarning("%s: %s", qUtf8Printable(m_package.name), qUtf8Printable(why));
    end(tr("Die heruntergeladene Datei ist nicht gültig signiert und wird nicht ausgeführt."));
}

void PackageFetch::end(const QString& problem) {
    m_problem = problem;
    if (!problem.isEmpty())
        removePackage(m_package.name);
    Q_EMIT ended();
}

} // namespace maintenance
