#include "maintenance/PackageFetch.h"
#include "common/RunTimeError.h"
#include "platform/net/Signature.h"
#include "store/StoreGlobals.h"
#include <QDir>

using namespace Qt::StringLiterals;
using platform::Download;

namespace maintenance {
namespace {

constexpr qint64 kSignatureBytes = 4096;

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
    connect(&m_download, &Download::ended, this, &PackageFetch::fetchSignature);
    connect(&m_signature, &Download::ended, this, &PackageFetch::readSignature);
}

PackageFetch::~PackageFetch() {
    if (m_check)
        m_check->wait();
    if (!m_isReady)
        QFile::remove(file());
}

QString PackageFetch::file() const {
    return store::appPath() + u"/Internet/"_s + m_package.name;
}

QString PackageFetch::signatureFile() const {
    return file() + u".sig"_s;
}

void PackageFetch::start() {
    QDir().mkpath(store::appPath() + u"/Internet"_s);
    QFile::remove(file());
    m_download.CopyURLToFile(m_server.systemAddress(m_package.name), file());
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
    const auto version = std::make_shared<std::optional<QString>>();
    m_check.reset(
        QThread::create([version, file = file(), signature, name = m_package.name, key = m_publicKey] {
            *version = platform::signedVersion(file, signature, name, key);
        }));
    connect(m_check.get(), &QThread::finished, this, [this, version] { checked(*version); });
    m_check->start();
}

void PackageFetch::checked(const std::optional<QString>& version) {
    if (!version)
        return refuse(u"the signature is not valid"_s);
    if (!m_package.isNewer(*version))
        return refuse(u"version %1 is not newer"_s.arg(*version));
    end({});
}

void PackageFetch::refuse(const QString& why) {
    qWarning("%s: %s", qUtf8Printable(m_package.name), qUtf8Printable(why));
    end(tr("Die heruntergeladene Datei ist nicht gültig signiert und wird nicht ausgeführt."));
}

void PackageFetch::end(const QString& problem) {
    m_problem = problem;
    m_isReady = problem.isEmpty();
    if (!m_isReady) {
        QFile::remove(file());
        QFile::remove(signatureFile());
    }
    Q_EMIT ended();
}

} // namespace maintenance
