// Takes a demo order by itself through the real screens: a call on the line, a click, the customer, three
// products, an extra, a discount, booking and the printed slip; then the catalogue goes up to a web shop, and
// an order from there is taken over and booked. It plays the router's call monitor on loopback, runs a shop
// and an FTP server there and prints through a print service of its own. Leaves the slips' PDFs and
// screenshots in <installation>/Demo.
//
// Usage: tavolino-demo <installation> [--screens]. Ends with 0 when both slips were printed. With --screens
// it also takes a screenshot of each screen, for the manual.
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "platform/IniRegistryStore.h"
#include "platform/QtDialogs.h"
#include "platform/form/DataGrid.h"
#include "platform/line/LineFactory.h"
#include "platform/net/QtInternet.h"
#include "platform/report/CupsPrinters.h"
#include "platform/report/QtReports.h"
#include "shell/AppStyle.h"
#include "shell/Application.h"
#include "store/StoreGlobals.h"
#include "tests/support/CupsServer.h"
#include "tests/support/Keys.h"
#include "tests/support/Servers.h"
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 15000;

[[noreturn]] void giveUp(const QString& why) {
    QTextStream(stderr) << "The demo order failed: " << why << '\n';
    std::_Exit(1);
}

void waitFor(const std::function<bool()>& condition, const QString& what) {
    if (!QTest::qWaitFor(condition, kPatience))
        giveUp(what);
}

/// The router that calls: a call monitor on a free port.
class Router {
  public:
    Router() {
        if (!m_server.listen(QHostAddress::LocalHost))
            giveUp(m_server.errorString());
    }

    quint16 port() const { return m_server.serverPort(); }

    void ring(const QString& caller) {
        waitFor([this] { return m_server.hasPendingConnections(); }, u"the line did not come up"_s);
        QTcpSocket* line = m_server.nextPendingConnection();
        line->write((u"22.11.26 18:30:00;RING;0;"_s + caller + u";0444445566;SIP0;\r\n"_s).toLatin1());
        line->flush();
    }

  private:
    QTcpServer m_server;
};

class Demo {
  public:
    Demo(shell::Application& application, const QString& folder) :
        m_application(application), m_folder(folder) {
        QDir().mkpath(folder);
    }

    void takeCall(Router& router) {
        const QString caller =
            value(u"SELECT TOP 1 txt_Telefon FROM tbl_Verwaltung_Kunden WHERE txt_Telefon <> '' "
                  u"ORDER BY lng_ID"_s);
        router.ring(caller);
        waitFor([this] { return m_application.mainWindow().callWaits(); }, u"the call did not show"_s);
        shoot(u"anruf"_s);
        auto* panel = m_application.mainWindow().findChild<QWidget*>(u"ShowISDNNr"_s);
        QTest::mouseClick(panel, Qt::LeftButton);
        waitFor([this] { return order() != nullptr; }, u"the order screen did not open"_s);
        waitFor([this] { return order()->order().buttons().cmdSave; }, u"the customer was not found"_s);
    }

    void keyLines() {
        const QStringList codes = {code(u"offers extras"_s, 0), code(u"offers extras"_s, 1), code(u""_s, 2)};
        for (int line = 0; line < codes.size(); ++line) {
            focusLines();
            test::typeText(codes[line]);
            press(Qt::Key_Return);
            test::typeText(line == 1 ? u"2"_s : u"1"_s);
            press(Qt::Key_Return);
            if (line == 1)
                addExtra();
        }
        answerNext([this] { shoot(u"rabatt"_s); });
        QTest::mouseClick(order()->findChild<QPushButton*>(u"cmdRabatt"_s), Qt::LeftButton);
        shoot(u"auftragserfassung"_s);
    }

    void book() {
        answerNext([this] { shoot(u"drucken"_s); });
        const QTimer* unexpected = refuseDialogsIn(5000);
        press(Qt::Key_F12);
        delete unexpected;
        shoot(u"verbucht"_s);
    }

    /// What the printer has got, and the number of the booking.
    void keepSlip(test::CupsServer& printing, const QString& name) {
        const QString pdf = printing.waitForPdf(u"Bestellungen"_s, ++m_slips);
        if (pdf.isEmpty())
            giveUp(u"the slip did not print"_s);
        const QString kept = m_folder + u'/' + name + u".pdf"_s;
        QFile::remove(kept);
        if (!QFile::rename(pdf, kept))
            giveUp(u"no slip "_s + kept);
        QTextStream(stdout) << "Booked: order "
                            << value(u"SELECT TOP 1 lng_TrxNr FROM tbl_Auftragswesen_Bestellungen_Master "
                                     u"ORDER BY lng_TrxNr DESC"_s)
                            << Qt::endl
                            << "Slip: " << kept << Qt::endl;
    }

    void uploadCatalogue() {
        shell::ScreenManager& screens = m_application.mainWindow().screens();
        QWidget* transfer = screens.show(u"frmOnlineShopTransfer"_s);
        if (!transfer)
            giveUp(u"the transfer screen did not open"_s);
        transfer->findChild<QCheckBox*>(u"check_Agreement"_s)->setChecked(true);
        auto* update = transfer->findChild<QPushButton*>(u"cmdUpdate"_s);
        QTest::mouseClick(update, Qt::LeftButton);
        const auto* done = transfer->findChild<QLabel*>(u"lblDateiTyp"_s);
        waitFor([&] { return update->isEnabled() && done->text() == u"Upload beendet."_s; },
                u"the catalogue did not go up"_s);
        shoot(u"upload"_s);
        transfer->close();
    }

    /// The caller orders in the shop as well.
    void takeWebOrder(test::WebShop& shop) {
        const QString phone =
            value(u"SELECT TOP 1 txt_Telefon FROM tbl_Verwaltung_Kunden WHERE txt_Telefon <> '' "
                  u"ORDER BY lng_ID"_s);
        const QString product = value(
            u"SELECT TOP 1 lng_ID FROM tbl_Verwaltung_Produkte WHERE flag_Status = 0 ORDER BY lng_ID"_s);
        // Its shop counts from 1 each time: the moment tells it from the order of an earlier run.
        const QString json =
            u"{\"NAME\": \"Demo\", \"PLZORT\": \"8000 Zürich\", \"TELEFON\": \"%1\", \"TOTAL\": 1, "
            u"\"VERSANDZEIT\": \"%3\", \"ZEILEN\": [{\"ISPRODUKT\": 1, \"PRODUKTID\": %2, \"ANZAHL\": 2}]}"_s
                .arg(phone, product, QDateTime::currentDateTime().toString(u"d.M.yyyy, HH:mm:ss"_s));
        if (shop.addOrder(json.toUtf8()) == 0)
            giveUp(u"the shop refused the order"_s);
        m_application.mainWindow().InternetLinkTimer_Timer();
        waitFor([this] { return m_application.mainWindow().internetAttention() == 3; },
                u"the web order did not come in"_s);
        shoot(u"webshop"_s);
        press(Qt::Key_F11);
        QWidget* screen = m_application.mainWindow().screens().open(u"frmInternetBestellungen"_s);
        auto* list = screen ? screen->findChild<platform::DataGrid*>() : nullptr;
        if (!list || list->rowCount() == 0)
            giveUp(u"the list of web orders is empty"_s);
        shoot(u"internet-bestellungen"_s);
        list->setFocus();
        list->selectRow(0);
        answerNext([this] { shoot(u"webshop-kunde"_s); });
        QTest::keyClick(list, Qt::Key_Return);
        waitFor([this] { return order() && order()->order().LastFilledRow() == 0; },
                u"the web order was not taken over"_s);
        shoot(u"webshop-auftrag"_s);
    }

    /// Every other screen, each by itself.
    void shootScreens() {
        shell::ScreenManager& screens = m_application.mainWindow().screens();
        for (const char16_t* name :
             {u"frmProdukteKategorien", u"frmVerwaltungKuriere", u"frmProdukteExtras", u"frmProdukte",
              u"frmVerwaltungKunden", u"frmEinstellungenSystem", u"frmEinstellungenBenutzer",
              u"frmAuftragswesenVorbestellungen", u"frmVerwaltungAnruferListe"}) {
            const QString screen = QString::fromUtf16(name);
            if (!screens.has(screen))
                continue;
            QTimer::singleShot(600, qApp, [this, screen] {
                shoot(screen);
                if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                    dialog->reject();
            });
            screens.show(screen);
            QTest::qWait(900);
            if (QWidget* open = screens.open(screen))
                open->close();
        }
    }

    QString value(const QString& sql) {
        store::Recordset rows;
        rows.Open(sql, ConnMain, store::adOpenForwardOnly, store::adLockReadOnly);
        return rows.Eof() ? QString() : rows.Fields(rows.Columns().front().name).text();
    }

  private:
    frmAuftragswesenAuftragserfassung* order() {
        return qobject_cast<frmAuftragswesenAuftragserfassung*>(
            m_application.mainWindow().screens().open(u"frmAuftragswesenAuftragserfassung"_s));
    }

    /// Short code of some product with or without extras on offer.
    QString code(const QString& extras, int skip) {
        const QString sql =
            u"SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte WHERE flag_Status = 0 AND %1 "
            u"(SELECT lng_ProduktID FROM tbl_Verwaltung_Produkte_Extras) ORDER BY lng_ID"_s;
        store::Recordset rows;
        rows.Open(sql.arg(extras.isEmpty() ? u"lng_ID NOT IN"_s : u"lng_ID IN"_s), ConnMain,
                  store::adOpenForwardOnly, store::adLockReadOnly);
        for (int i = 0; i < skip * 3 && !rows.Eof(); ++i)
            rows.MoveNext();
        return rows.Eof() ? giveUp(u"the catalogue is empty"_s),
               QString()  : rows.Fields(u"txt_Kurzzeichen").text();
    }

    void focusLines() { press(Qt::Key_F6); }

    void addExtra() {
        press(Qt::Key_F8);
        press(Qt::Key_Return);
    }

    void press(Qt::Key key) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : order(), key);
    }

    /// Answers the next dialog by its first button, after looking at it.
    void answerNext(const std::function<void()>& look) {
        QTimer::singleShot(400, qApp, [look] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog)
                giveUp(u"a dialog did not come"_s);
            look();
            QTest::keyClick(dialog, Qt::Key_Return);
        });
    }

    /// A message that comes now means that something went wrong.
    QTimer* refuseDialogsIn(int milliseconds) {
        auto* timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, qApp, [] {
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            giveUp(box ? box->text() : u"printing takes too long"_s);
        });
        timer->start(milliseconds);
        return timer;
    }

    void shoot(const QString& name) {
        QTest::qWait(150);
        const QString file = m_folder + u'/' + name + u".png"_s;
        if (!qApp->primaryScreen()->grabWindow(0).save(file))
            giveUp(u"no screenshot "_s + file);
        QTextStream(stdout) << "Screenshot: " << file << Qt::endl;
    }

    int m_slips = 0;
    shell::Application& m_application;
    QString m_folder;
};

} // namespace

int main(int argc, char** argv) {
    QApplication qt(argc, argv);
    shell::applyStyle(qt);
    const QString installation = QDir(qt.arguments().value(1)).absolutePath();
    const QString folder = installation + u"/Demo"_s;

    test::CupsServer printing;
    if (!printing.started())
        giveUp(printing.failure());
    printing.addQueue(u"Bestellungen"_s);
    printing.setDefault(u"Bestellungen"_s);

    Router router;
    platform::LineSettings settings;
    settings.kind = platform::LineSettings::Kind::Monitor;
    settings.monitor = {u"127.0.0.1"_s, router.port()};
    const std::unique_ptr<platform::BasicCAPI32> line = platform::createLine(settings);

    platform::QtDialogs dialogs;
    platform::IniRegistryStore registry(folder + u"/einstellungen.ini"_s);
    platform::QtReports reports(dialogs);
    platform::CupsPrinters printers;
    test::ShopServers shop;
    platform::QtInternet internet(shop.endpoints());
    shell::Application application(
        {installation, dialogs, registry, reports, printers, internet, {line.get()}, [](int code) {
             std::_Exit(code == 0 ? 1 : code);
         }});
    if (!application.start())
        giveUp(u"the program did not start"_s);
    application.mainWindow().showMaximized();
    if (!QTest::qWaitForWindowActive(&application.mainWindow(), kPatience))
        giveUp(u"the window did not come up"_s);

    Demo demo(application, folder);
    demo.takeCall(router);
    demo.keyLines();
    demo.book();
    if (qt.arguments().contains(u"--screens"_s))
        demo.shootScreens();
    demo.keepSlip(printing, u"bestellschein"_s);
    demo.uploadCatalogue();
    demo.takeWebOrder(shop.web);
    demo.book();
    demo.keepSlip(printing, u"bestellschein-webshop"_s);
    return 0;
}
