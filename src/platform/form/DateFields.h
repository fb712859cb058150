#pragma once
#include <QLineEdit>
#include <QWidget>

class QAbstractButton;
class QLabel;

/// The fields for days and for times of the day that every statistic is asked by, with their steppers.
namespace platform {

/// A span of days: the fields txt_DatumVon and txt_DatumBis with their labels and steppers. Both are today at
/// first. A field selects its text on focus; left with a valid date it holds that as "DD/MM/YYYY" (a short
/// year by modFunctions::FormatDateDDMMYYYY), with anything else it becomes today. The steppers, and the
/// arrow keys up and down, go a day back or on where the field holds a valid date. Enter goes from one field
/// to the other and back.
class DateSpan : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString vonToolTip READ vonToolTip WRITE setVonToolTip)
    Q_PROPERTY(QString bisToolTip READ bisToolTip WRITE setBisToolTip)
    Q_PROPERTY(QString bisCaption READ bisCaption WRITE setBisCaption)
  public:
    explicit DateSpan(QWidget* parent = nullptr);

    /// As whole serials. A text that leaving the field would mend is mended by then: not every road to the
    /// figures leads out of the field.
    qint64 von();
    qint64 bis();
    void setDay(double serial);

    /// The two texts as they stand, with " - " between.
    QString text() const;

    QString vonToolTip() const { return m_von->toolTip(); }

    QString bisToolTip() const { return m_bis->toolTip(); }

    QString bisCaption() const;

    void setVonToolTip(const QString& text) { m_von->setToolTip(text); }

    void setBisToolTip(const QString& text) { m_bis->setToolTip(text); }

    /// With the mnemonic that the screen has left.
    void setBisCaption(const QString& text);

  private:
    struct Names;
    QLineEdit* addField(const Names& names);

    QLineEdit *m_von, *m_bis;
};

/// Likewise for a time "hh:mm": left with none it becomes "00:00", the steppers go an hour, round the clock.
void setUpTimeField(QLineEdit& field, QAbstractButton& back, QAbstractButton& forward);

/// The field's time as fraction of the day, mended like a date.
double timeOf(QLineEdit& field);

} // namespace platform
