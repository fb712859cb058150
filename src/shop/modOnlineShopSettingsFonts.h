#pragma once
#include "store/RowMark.h"
#include <QByteArray>
#include <QString>
#include <optional>

/// What the web shop looks like, and its title picture. The rows are those of shop/SettingRows.h.
/// Pictures lie in the folder Internet beside the program: logo_kurier.<ext> is in force,
/// temp_logo_kurier.<ext> a working copy of one that is chosen, logo_demokurier.jpg the default.
namespace modOnlineShopSettingsFonts {

/// A colour as 0xBBGGRR and as six hexadecimal digits, red first.
struct Farbe {
    int dez = 0;
    QString hex;
};

struct CorporateIdentity {
    Farbe Balkenfarbe, Schriftfarbe;
    QString txt_Hintergrundbild;
    QString txt_ShopTitel;
};

QString ColorCodeToRGB(int color);
/// The last three letters of a file name.
QString ExtensionOf(const QString& fileName);
/// Path of a file in the folder Internet.
QString PicturePath(const QString& fileName);

/// Nothing without the row 1.
std::optional<CorporateIdentity> LoadCorporateIdentity();
/// What LoadCorporateIdentity reads.
store::RowMark MarkCorporateIdentity();
/// The row 0; its picture becomes the working copy. Nothing without the row.
std::optional<CorporateIdentity> LoadDefaultCorporateIdentity();
/// Puts the working copy into force under the stored name, or else the default picture; where there is
/// neither, the picture in force stays. The picture and the row, or none of them.
void SaveCorporateIdentity(CorporateIdentity identity, const store::RowMark& mark = {});

/// Makes a picture the working copy and gives its file name.
QString StagePicture(const QString& extension, const QByteArray& picture);
/// The working copy becomes what is in force: nothing that was chosen and not saved comes with a later save.
void DropWorkingCopy(const QString& extension);

} // namespace modOnlineShopSettingsFonts
