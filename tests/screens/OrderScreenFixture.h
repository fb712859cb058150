#pragma once
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "screens/ScreenTest.h"

namespace test {

/// The order screen, open and wide enough for all that it shows.
template <typename Dialogs>
class OrderScreen : public ScreenTest<frmAuftragswesenAuftragserfassung, Dialogs> {
  protected:
    OrderScreen() {
        this->open(phoneBook);
        this->screen->resize(1360, 600);
    }

    orders::WorkingOrder& order() { return this->screen->order(); }

    void search(const QString& number) {
        this->press(Qt::Key_F3);
        this->type(number);
        this->press(Qt::Key_Return);
    }

    QString cell(int row, int column) { return order().BestellungGrid.text(row, column); }

    bool enabled(QStringView name) { return this->find(name)->isEnabled(); }

    TestPhoneBook phoneBook;
};

} // namespace test
