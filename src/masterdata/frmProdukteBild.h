#pragma once
#include "masterdata/ProductPictures.h"
#include <QImage>
#include <QLabel>

/// The box of one product picture: shows it scaled into the box, and knows whether it changed in this edit.
class frmProdukteBild : public QLabel {
    Q_OBJECT
  public:
    enum class Choice { Taken, NoPicture, TooBig };

    explicit frmProdukteBild(QWidget* parent = nullptr);

    /// Before the first picture.
    void setSize(masterdata::PictureSize size) { m_size = size; }

    /// The unchanged picture of a product; "" for none. A file that is missing or unreadable leaves the box
    /// empty.
    void showStored(const QString& fileName);
    /// Looks into the file, shows it and stages it. A refused file changes nothing. A picture is a GIF or JPG
    /// by its content and by its name, no side longer than the size allows. Throws what stagePicture throws.
    Choice choose(const QString& path);
    void remove();

    const masterdata::ProduktBild& picture() const { return m_picture; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void display();

    QImage m_image;
    masterdata::PictureSize m_size = masterdata::PictureSize::Klein;
    masterdata::ProduktBild m_picture;
};
