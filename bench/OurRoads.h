#pragma once
#include "Quiet.h"
#include "Workload.h"
#include "orders/WorkingOrder.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"

namespace bench {

/// The installation's databases, open as the program opens them. One at a time.
class OpenInstallation {
  public:
    explicit OpenInstallation(const QString& folder);
    ~OpenInstallation();
    OpenInstallation(const OpenInstallation&) = delete;
    OpenInstallation& operator=(const OpenInstallation&) = delete;

    /// The connection's own handle.
    static struct sqlite3* handle();
};

/// The roads through Tavolino's own code, from the order on, without a window.
class OrderRoads {
  public:
    OrderRoads();

    /// What a call that is taken does with the order.
    static void call(orders::WorkingOrder& order, const QString& number);

    void call(const QString& number) { call(m_order, number); }

    /// Keys the codes into the first eight lines.
    static void fill(orders::WorkingOrder& order, const Workload& work);

    /// Keys the code into one of the first eight lines.
    void keyedCode(const QString& code);
    /// Takes a call and keys eight lines, as the order that is booked again and again.
    void prepare(const Workload& work);
    void book();
    void load(qint64 trxNr);
    qint64 following(qint64 trxNr);

  private:
    QuietServices m_services;
    orders::WorkingOrder m_order, m_booked;
    int m_line = 0;
};

/// The same on the order screen in a window of 1366 x 768.
class ScreenRoads {
  public:
    ScreenRoads();

    void call(const QString& number) { m_screen.takeCall(number); }

    /// The customer's last orders, which are read behind the painting.
    void lastOrders();
    void keyedCode(const QString& code);

    void load(qint64 trxNr) { m_screen.loadBooking(trxNr); }

    /// Finds the customer and keys all lines; ends the program when one is missing afterwards.
    void takeOver(const QString& number, const desks::WebOrder& web);

    /// Until everything that has changed is painted, and what is done behind the painting.
    void paint();
    /// Until everything that has changed is painted.
    static void paintOnly();

  private:
    QuietServices m_services;
    QuietPhoneBook m_phoneBook;
    frmAuftragswesenAuftragserfassung m_screen;
    int m_line = 0;
};

constexpr int kLines = 8;

} // namespace bench
