#include "shop/modOnlineShopSettingsFonts.h"
#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include "platform/ColorCode.h"
#include "shop/SettingRows.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace modOnlineShopSettingsFonts {
namespace {

const QString kTable = u"tbl_OnlineShop_CorporateIdentity"_s;
const QString kInForce = u"logo_kurier."_s;
const QString kWorkingCopy = u"temp_logo_kurier."_s;
const QString kDefault = u"logo_demokurier."_s;

QByteArray bytesOf(const QString& fileName) {
    QFile file(PicturePath(fileName));
    if (!file.open(QIODevice::ReadOnly))
        throw common::RunTimeError(common::kFileNotFound,
                                   u"Das Titelbild \"%1\" kann nicht gelesen werden."_s.arg(fileName),
                                   file.fileName() + u": "_s + file.errorString());
    return file.readAll();
}

void putInPlace(const QString& fileName, const QByteArray& picture) {
    QDir().mkpath(PicturePath({}));
    common::writeFileAtomically(PicturePath(fileName), picture);
}

/// The first of the files that exists; "" without one.
QString firstOf(std::initializer_list<QString> fileNames) {
    for (const QString& fileName : fileNames)
        if (QFile::exists(PicturePath(fileName)))
            return fileName;
    return {};
}

Farbe color(store::Recordset& row, const QString& name) {
    return {int(row.Fields(name + u"DEZ"_s).text().toLongLong() & 0xffffff),
            row.Fields(name + u"HEX"_s).text()};
}

std::optional<CorporateIdentity> load(qint64 key) {
    const store::OpenRecordset row(RsMain, store::rowQuery(kTable, key) + u';', ConnMain);
    if (row->Eof())
        return {};
    return CorporateIdentity{color(*row, u"txt_Balkenfarbe"_s), color(*row, u"txt_Schriftfarbe"_s),
                             row->Fields(u"txt_Hintergrundbild").text(),
                             row->Fields(u"txt_ShopTitel").text()};
}

void write(const CorporateIdentity& identity) {
    store::WriteRecordset row(RsMain, store::rowQuery(kTable, shop::kFirmRow) + u';', ConnMain);
    row->Fields(u"txt_BalkenfarbeDEZ") = QString::number(identity.Balkenfarbe.dez);
    row->Fields(u"txt_BalkenfarbeHEX") = identity.Balkenfarbe.hex;
    row->Fields(u"txt_SchriftfarbeDEZ") = QString::number(identity.Schriftfarbe.dez);
    row->Fields(u"txt_SchriftfarbeHEX") = identity.Schriftfarbe.hex;
    row->Fields(u"txt_Hintergrundbild") = identity.txt_Hintergrundbild;
    row->Fields(u"txt_ShopTitel") = identity.txt_ShopTitel;
    row->Update();
}

} // namespace

QString ColorCodeToRGB(int color) {
    return u"%1"_s.arg(platform::swapRedAndBlue(color), 6, 16, QChar(u'0')).toUpper();
}

QString ExtensionOf(const QString& fileName) {
    return fileName.right(3);
}

QString PicturePath(const QString& fileName) {
    return store::appPath() + u"/Internet/"_s + fileName;
}

std::optional<CorporateIdentity> LoadCorporateIdentity() {
    return load(shop::kFirmRow);
}

store::RowMark MarkCorporateIdentity() {
    return store::markRow(kTable, shop::kFirmRow);
}

std::optional<CorporateIdentity> LoadDefaultCorporateIdentity() {
    auto identity = load(shop::kDefaultRow);
    if (identity)
        StagePicture(ExtensionOf(identity->txt_Hintergrundbild), bytesOf(kDefault + u"jpg"_s));
    return identity;
}

void SaveCorporateIdentity(CorporateIdentity identity, const store::RowMark& mark) {
    const QString extension = ExtensionOf(identity.txt_Hintergrundbild);
    identity.txt_Hintergrundbild = kInForce + extension;
    const QString picture =
        firstOf({kWorkingCopy + extension, kDefault + extension, identity.txt_Hintergrundbild});
    store::transact(ConnMain, [&] {
        mark.require();
        write(identity);
        putInPlace(identity.txt_Hintergrundbild,
                   bytesOf(picture.isEmpty() ? identity.txt_Hintergrundbild : picture));
    });
}

QString StagePicture(const QString& extension, const QByteArray& picture) {
    putInPlace(kWorkingCopy + extension, picture);
    return kWorkingCopy + extension;
}

void DropWorkingCopy(const QString& extension) {
    if (const QString inForce = firstOf({kInForce + extension}); !inForce.isEmpty())
        putInPlace(kWorkingCopy + extension, bytesOf(inForce));
    else
        QFile::remove(PicturePath(kWorkingCopy + extension));
}

} // namespace modOnlineShopSettingsFonts
