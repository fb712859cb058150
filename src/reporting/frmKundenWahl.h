#pragma once
#include <QObject>

class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

/// The customer whose statistic a screen shows, chosen by his number or by his telephone number. The layout
/// of the screen has for it:
///
///     txt_KundenID                          the number; Enter and leaving the field load the customer
///     opt_KundenNummer, opt_TelefonNummer   what the number is
///     cmdLoad                               loads as well
///     txt_KundenAdresse                     whom it found
///     cmdPrint                              enabled while the customer stands as he was loaded
class frmKundenWahl : public QObject {
    Q_OBJECT
  public:
    explicit frmKundenWahl(QWidget& screen);

    void LoadKundenStammKundenStats();

    /// -1 while none is loaded.
    qint64 lng_KundenID() const { return m_lng_KundenID; }

    QString adresse() const;
    /// Nobody is on show, and the next one is asked for. The loaded customer is kept.
    void leer();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    /// As the option tells; -1 for what is no number.
    qint64 wanted() const;

    QLineEdit& m_txt_KundenID;
    QRadioButton& m_opt_TelefonNummer;
    QPlainTextEdit& m_txt_KundenAdresse;
    QPushButton& m_cmdPrint;
    qint64 m_lng_KundenID = -1;
};
