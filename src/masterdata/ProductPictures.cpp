#include "masterdata/ProductPictures.h"
#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace masterdata {
namespace {

QString folder(const QString& name) {
    return store::appPath() + u"/Internet/"_s + name + u'/';
}

QString storedFolder(PictureSize size) {
    return folder(size == PictureSize::Klein ? u"Pictures_Small"_s : u"Pictures_Large"_s);
}

[[noreturn]] void fail(const QString& from, const QString& to, const QString& why) {
    throw common::RunTimeError(common::kPlatformFailure, u"Das Bild kann nicht kopiert werden."_s,
                               from + u" -> "_s + to + u": "_s + why);
}

/// Gives the name of a copy that stands beside `place`.
QString copyBeside(const QString& from, const QString& place) {
    QString copy = place + u".neu"_s;
    QDir().mkpath(QFileInfo(place).path());
    QFile::remove(copy);
    QFile source(from);
    if (!source.copy(copy))
        fail(from, copy, source.errorString());
    return copy;
}

void putInPlace(const QString& copy, const QString& place) {
    if (const std::error_code error = common::replaceFile(place, copy))
        fail(copy, place, QString::fromStdString(error.message()));
}

} // namespace

int maxPixels(PictureSize size) {
    return size == PictureSize::Klein ? 150 : 900;
}

QString extensionOf(const QString& fileName) {
    return fileName.mid(fileName.lastIndexOf(u'.') + 1);
}

QString storedPicture(PictureSize size, const QString& fileName) {
    return storedFolder(size) + fileName;
}

QString stagePicture(PictureSize size, const QString& path) {
    QString name =
        (size == PictureSize::Klein ? u"SMALL_ProduktBild."_s : u"LARGE_ProduktBild."_s) + extensionOf(path);
    const QString place = folder(u"Pictures_Temp"_s) + name;
    putInPlace(copyBeside(path, place), place);
    return name;
}

NewPicture::NewPicture(PictureSize size, const QString& stagedName, qint64 produktId) :
    m_place(storedPicture(size, QString::number(produktId) + u'.' + extensionOf(stagedName))),
    m_stagedName(storedPicture(size, stagedName)),
    m_copy(copyBeside(folder(u"Pictures_Temp"_s) + stagedName, m_place)) {
}

NewPicture::~NewPicture() {
    QFile::remove(m_copy);
}

void NewPicture::publish() {
    QFile::remove(m_stagedName);
    putInPlace(m_copy, m_place);
}

} // namespace masterdata
