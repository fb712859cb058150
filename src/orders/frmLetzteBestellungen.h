#pragma once
#include "orders/modLetzteBestellungen.h"
#include <QGroupBox>
#include <QTimer>
#include <optional>

/// What the customer on the order screen ordered before, to order again by a click or Enter.
class frmLetzteBestellungen : public QGroupBox {
    Q_OBJECT
  public:
    explicit frmLetzteBestellungen(QWidget* parent = nullptr);

    /// The orders of this customer take the place of another one's, -1 shows none: once what else has changed
    /// is painted, and only for the customer who stays. Until then nothing can be chosen.
    void setKunde(qint64 kundenId);
    /// Reads at once what is still waiting to be read.
    void readNow();

    /// Number of the newest order, if there is one.
    std::optional<qint64> newest();
    /// Puts the focus into the list.
    void goToList();

  Q_SIGNALS:
    /// Whether there is something to choose from.
    void filled(bool any);
    /// The user wants the order of this number again.
    void bestellungChosen(qint64 trxNr);

  protected:
    /// The box tells in its title when the customer last ordered. Changing the title itself would lay the
    /// whole screen out anew, while a call is brought onto it.
    void initStyleOption(QStyleOptionGroupBox* option) const override;

  private:
    class List;
    class Model;
    void setUpList();
    void setUpSizes();
    void fill(std::vector<modLetzteBestellungen::LetzteBestellung> bestellungen, const QString& emptyText);

    /// Before the children, whose making asks for the style's option already.
    QString m_lastOrdered;
    Model* m_model;
    List* m_list;
    QTimer m_timer;
    qint64 m_kundenId = -1;
    bool m_waits = false;
};
