#pragma once
#include <QMenu>
#include <QObject>

/// Holder of the order screen's context menus; never shown itself.
class frmPopUpMenu : public QObject {
    Q_OBJECT
  public:
    explicit frmPopUpMenu(QWidget* parent);

    QMenu mnKonditionen;
    QMenu mnKurier;
    QMenu mnBestellungLoschen;

    /// Fills mnKurier on its first use; a courier added later shows when the screen is opened anew.
    void FillKurierMenuOnce();

  Q_SIGNALS:
    void konditionenChosen(const QString& text);
    void kurierChosen(qint64 kurierId, const QString& kurzzeichen);
    void bestellungLoschenLoschen();

  private:
    void addKonditionen();
};
