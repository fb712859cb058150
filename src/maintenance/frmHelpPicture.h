#pragma once
#include <QPixmap>
#include <QWidget>

/// A picture of a screen as large as there is room for, but no larger than it is. Read when it is first seen.
class frmHelpPicture : public QWidget {
    Q_OBJECT
  public:
    explicit frmHelpPicture(QString file, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_file;
    /// In the pixels of the display.
    QPixmap m_shown;
    QSize m_room;
};
