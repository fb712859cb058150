#pragma once
#include <QMenu>
#include <QObject>

/// Holder of the context menus of the order screen and the booking journal; never shown itself.
class frmPopUpMenu : public QObject {
    Q_OBJECT
  public:
    explicit frmPopUpMenu(QWidget* parent);

    QMenu mnKonditionen;
    QMenu mnKurier;
    QMenu mnBestellungLoschen;
    QMenu mnBuchungJournal;

    /// Fills mnKurier on its first use; a courier added later shows when the screen is opened anew.
    void FillKurierMenuOnce();
    /// It is filled anew at its next use, unless it stands open.
    void ForgetKuriere();

  Q_SIGNALS:
    void konditionenChosen(const QString& text);
    void kurierChosen(qint64 kurierId, const QString& kurzzeichen);
    void bestellungLoschenLoschen();
    /// An order of the journal's rows, as store::Recordset::Sort takes it.
    void buchungJournalSorted(const QString& order);

  private:
    /// A text that a menu gives out.
    struct Entry;
    static const Entry kKonditionen[];
    static const Entry kJournalOrders[];

    void addKonditionen();
    void addBuchungJournal();
    void addEntry(QMenu& menu, const Entry& entry, void (frmPopUpMenu::*chosen)(const QString&));
};
