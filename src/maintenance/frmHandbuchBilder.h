#pragma once
#include <QHash>
#include <QImage>
#include <QObject>
#include <QTextObjectInterface>

/// The pictures of a document, no wider than its lines. Only the size of a picture is read at first, the
/// picture itself when it comes into view.
class frmHandbuchBilder : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
  public:
    /// `folder` is where the names of the pictures begin.
    frmHandbuchBilder(QString folder, QObject* parent) : QObject(parent), m_folder(std::move(folder)) {}

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& room, QTextDocument* document, int position,
                    const QTextFormat& format) override;

  private:
    const QImage& scaled(const QString& name, const QSize& pixels);

    QString m_folder;
    QHash<QString, QSize> m_sizes;
    QHash<QString, QImage> m_scaled;
};
