#include "masterdata/ProductPictures.h"
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

/// Puts a copy in the place of whatever stands there.
void replaceFile(const QString& from, const QString& to) {
    // Two missing files compare as one and the same.
    if (QFileInfo::exists(from) && QFileInfo(from) == QFileInfo(to))
        return;
    QDir().mkpath(QFileInfo(to).path());
    QFile::remove(to);
    QFile source(from);
    if (!source.copy(to))
        throw common::RunTimeError(common::kPlatformFailure, u"Das Bild kann nicht kopiert werden."_s,
                                   from + u" -> "_s + to + u": "_s + source.errorString());
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
    const QString name =
        (size == PictureSize::Klein ? u"SMALL_ProduktBild."_s : u"LARGE_ProduktBild."_s) + extensionOf(path);
    replaceFile(path, folder(u"Pictures_Temp"_s) + name);
    return name;
}

void publishPicture(PictureSize size, const QString& stagedName, qint64 produktId) {
    QFile::remove(storedPicture(size, stagedName));
    replaceFile(folder(u"Pictures_Temp"_s) + stagedName,
                storedPicture(size, QString::number(produktId) + u'.' + extensionOf(stagedName)));
}

} // namespace masterdata
