#pragma once
#include <QString>

/// The picture files of the products, in the folder Internet beside the program. Their paths take no part in
/// what a picture shows: the screen has looked into a file before it comes here.
namespace masterdata {

enum class PictureSize { Klein, Gross };

/// A product's picture in an edit.
struct ProduktBild {
    /// File name of the stored picture or, once changed, of the staged one; "" without a picture.
    QString datei;
    bool geaendert = false;
};

/// Longest side in pixels.
int maxPixels(PictureSize size);
/// The text behind the last point of a file name; "" for an empty name.
QString extensionOf(const QString& fileName);
QString storedPicture(PictureSize size, const QString& fileName);

/// Copies the file into the staging folder, which holds one file a size and extension, and gives its name
/// there. Throws RunTimeError kPlatformFailure.
QString stagePicture(PictureSize size, const QString& path);

/// A staged picture on its way to the product's name, the key and the extension: copied beside the one that
/// stands there, put into its place by publish, dropped without it. An older picture of the product with
/// another extension stays. Both steps throw RunTimeError kPlatformFailure.
class NewPicture {
  public:
    NewPicture(PictureSize size, const QString& stagedName, qint64 produktId);
    ~NewPicture();
    NewPicture(const NewPicture&) = delete;
    NewPicture& operator=(const NewPicture&) = delete;

    void publish();

  private:
    QString m_place, m_stagedName, m_copy;
};

} // namespace masterdata
