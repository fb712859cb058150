#include "shopserver/SystemFolder.h"
#include "shopserver/PlainText.h"
#include <QDate>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using common::Version;

namespace shop {
namespace {

constexpr qint64 kMostBytesOfOffer = 64 * 1024;
constexpr qint64 kMostBytesOfMessage = 16 * 1024;

QString messageIn(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return plainLines(QString::fromUtf8(file.read(kMostBytesOfMessage))).trimmed();
}

QByteArray tagged(const QList<QString>& values) {
    QString answer;
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QString number = u"%1"_s.arg(i + 1, 2, 10, QLatin1Char('0'));
        answer += u"=/"_s + number + u'=' + values[i] + u'=' + number + u"/="_s;
    }
    return answer.toUtf8();
}

QStringList values(const Version& version) {
    return {QString::number(version.major), QString::number(version.minor),
            QString::number(version.revision)};
}

} // namespace

SystemOffer SystemFolder::offer() const {
    QFile file(this->file(u"system.json"_s));
    if (!file.open(QIODevice::ReadOnly))
        throw SystemError("system.json kann nicht gelesen werden.");
    const QJsonObject told = QJsonDocument::fromJson(file.read(kMostBytesOfOffer)).object();
    const auto newest = Version::parse(told[u"version"_s].toString());
    const auto mayRun = Version::parse(told[u"mayRun"_s].toString());
    const QDate until = QDate::fromString(told[u"mayRunUntil"_s].toString(), Qt::ISODate);
    const qint64 phoneBook = told[u"phoneBook"_s].toInteger(-1);
    if (!newest || !mayRun || !until.isValid() || phoneBook < 0 || phoneBook >= common::kPhoneBookVersions)
        throw SystemError("system.json braucht version, mayRun, mayRunUntil und phoneBook.");
    return {*newest, *mayRun, QDate(1899, 12, 30).daysTo(until), int(phoneBook)};
}

QStringList SystemFolder::messages(const QString& installation) const {
    if (installation.isEmpty())
        return {};
    const QDir folder(file(u"messages"_s));
    const QString own = installation + u".txt"_s;
    QStringList texts;
    if (folder.entryList(QDir::Files | QDir::NoSymLinks).contains(own))
        texts << messageIn(folder.filePath(own));
    texts << messageIn(file(u"message.txt"_s));
    texts.removeAll(QString());
    return texts;
}

QByteArray softwareAnswer(const SystemOffer& offer) {
    return tagged(values(offer.newest));
}

QByteArray phoneBookAnswer(const SystemOffer& offer) {
    return tagged({QString::number(offer.phoneBook)});
}

QByteArray startAnswer(const SystemOffer& offer, const QString& message) {
    static const QRegularExpression tag(u"=(?=/[0-9]{2}=|[0-9]{2}/=)"_s);
    return tagged(values(offer.newest) + values(offer.mayRun) +
                  QStringList{QString::number(offer.mayRunUntil), message.isEmpty() ? u"0"_s : u"1"_s,
                              QString(message).replace(tag, u"= "_s)});
}

} // namespace shop
