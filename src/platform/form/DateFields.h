#pragma once
#include <QtGlobal>

class QAbstractButton;
class QLineEdit;

/// The fields for a day and for a time of the day that every statistic is asked by, with their steppers.
namespace platform {

/// Gives the field today. It selects its text on focus; left with a valid date it holds that as "DD/MM/YYYY"
/// (a short year by modFunctions::FormatDateDDMMYYYY), with anything else it becomes today. The steppers, and
/// the arrow keys up and down, go a day back or on where the field holds a valid date.
void setUpDateField(QLineEdit& field, QAbstractButton& back, QAbstractButton& forward);

/// Likewise for a time "hh:mm": left with none it becomes "00:00", the steppers go an hour, round the clock.
void setUpTimeField(QLineEdit& field, QAbstractButton& back, QAbstractButton& forward);

/// The field's day as whole serial, its time as fraction of the day. A text that leaving the field would mend
/// is mended by then: not every road to the figures leads out of the field.
qint64 dayOf(QLineEdit& field);
double timeOf(QLineEdit& field);

} // namespace platform
