#include "ListRoads.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/form/DataGrid.h"
#include "platform/form/FieldHelpers.h"
#include "platform/form/MasterDataForm.h"
#include "shell/Screens.h"
#include "shop/modInternetBestellungen.h"
#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QTimer>
#include <span>

namespace bench {

using namespace Qt::StringLiterals;
using orders::Col;
using platform::DataGrid;
using platform::MasterDataForm;

namespace {

constexpr double kAim = 2;
constexpr double kDraftAim = 1.1;
/// Different rows, names or orders that a road goes through.
constexpr int kVariants = 20;
/// Rows of a list that a screen shows at once.
constexpr int kPage = 25;

struct Named {
    const char* title;
    const char16_t* screen;
};

constexpr Named kScreens[] = {{"categories", u"frmProdukteKategorien"},
                              {"couriers", u"frmVerwaltungKuriere"},
                              {"extras", u"frmProdukteExtras"},
                              {"products", u"frmProdukte"},
                              {"users", u"frmEinstellungenBenutzer"},
                              {"customers", u"frmVerwaltungKunden"},
                              {"settings", u"frmEinstellungenSystem"},
                              {"order", u"frmAuftragswesenAuftragserfassung"},
                              {"pre-orders", u"frmAuftragswesenVorbestellungen"},
                              {"callers", u"frmVerwaltungAnruferListe"}};
/// Of these, those whose list is always the same.
constexpr size_t kForms = 5;

void paint() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

/// Takes the texts of the rows at the top out of the list, as painting it does.
void readPage(const DataGrid& grid) {
    const QAbstractItemModel& model = *grid.model();
    const int rows = std::min(kPage, model.rowCount());
    for (int column = 0; column < model.columnCount(); ++column)
        if (!grid.isColumnHidden(column))
            for (int row = 0; row < rows; ++row)
                model.data(model.index(row, column), Qt::DisplayRole);
}

DataGrid& gridOf(const QWidget& screen) {
    return *screen.findChild<DataGrid*>();
}

/// Clicks the button and looks at what the list shows then.
std::function<void(size_t)> click(const QWidget& screen, const QString& button) {
    return [&grid = gridOf(screen), clicked = screen.findChild<QAbstractButton*>(button)](size_t) {
        clicked->click();
        readPage(grid);
    };
}

/// What the shop answers while so many orders are open.
QString webAnswer(int orders) {
    QString answer = u"<BESTELLUNGEN>"_s;
    for (int id = 1; id <= orders; ++id)
        answer += u"<RECORD><ID>%1</ID><FIRMA>Muster AG</FIRMA><NAME>Meier %1</NAME><VORNAME>Anna</VORNAME>"
                  u"<STRASSE>Seestrasse %1</STRASSE><ETAGE>2. Stock</ETAGE><PLZORT>8001 Zürich</PLZORT>"
                  u"<TELEFON>079 123 45 67</TELEFON><EMAIL>anna.meier@muster.ch</EMAIL>"
                  u"<VERSANDART>Lieferung</VERSANDART><VERSANDZEIT>15. Mai 2026, 19:30</VERSANDZEIT>"
                  u"<ANMERKUNG>Bitte zweimal klingeln.</ANMERKUNG><TOTAL>38.50</TOTAL></RECORD>"_s.arg(id);
    return answer + u"</BESTELLUNGEN>"_s;
}

} // namespace

ListRoads::ListRoads(RawStore& store, const Workload& work) :
    m_store(store), m_work(work), m_draft(m_kept, QDir::tempPath() + u"/tavolino-bench.entwurf"_s) {
    platform::setWaiting(false);
    shell::registerScreens(m_registry, m_services.services(), m_phoneBook, m_publisher);
    m_room.resize(1366, 768);
    m_room.show();
    for (orders::WorkingOrder* order : {&m_preOrder, &m_kept, &m_unkept}) {
        order->SetUp();
        OrderRoads::fill(*order, work);
    }
    paint();
}

Road ListRoads::replayed(const std::string& name, int runs, std::function<void(size_t)> ours, int variants) {
    const auto raw = [replay = std::make_shared<Replay>(m_store), ours, variants](size_t i) {
        // At the first run, when what is looked up once only, such as a table's columns, is known.
        for (int variant = 0; variant < variants && replay->recordings() < variants; ++variant)
            replay->record(OpenInstallation::handle(), [&] { ours(size_t(variant)); });
        replay->run(i);
    };
    return {name, runs, [ours, variants](size_t i) { ours(i % size_t(variants)); }, raw, kAim};
}

std::vector<Road> ListRoads::roads() {
    std::vector<Road> all;
    for (const auto& more :
         {openings(), lists(), customers(), preOrders(), webOrders(), draft(), statistics()})
        all.insert(all.end(), more.begin(), more.end());
    return all;
}

void ListRoads::open(const QString& name) {
    const std::unique_ptr<QWidget> opened(m_registry.find(name)->create(&m_room));
    opened->show();
    paint();
}

QWidget& ListRoads::screen(const QString& name) {
    QWidget& screen = *m_screens.emplace_back(m_registry.find(name)->create(nullptr));
    screen.show();
    paint();
    return screen;
}

std::vector<Road> ListRoads::openings() {
    std::vector<Road> roads;
    for (const auto& [title, name] : kScreens)
        roads.push_back(replayed(std::string("Opened and painted: ") + title, 1,
                                 [this, screen = QString::fromUtf16(name)](size_t) { open(screen); }));
    return roads;
}

std::vector<Road> ListRoads::lists() {
    std::vector<Road> roads;
    for (const auto& [title, name] : std::span(kScreens).first(kForms)) {
        auto* form = dynamic_cast<MasterDataForm*>(&screen(QString::fromUtf16(name)));
        roads.push_back(replayed(std::string("List: ") + title, 1, [form, &grid = gridOf(*form)](size_t) {
            form->FormatGrid();
            readPage(grid);
        }));
    }
    const QWidget& products = screen(u"frmProdukte"_s);
    const auto save = [&grid = gridOf(products), cmdSave = click(products, u"cmdSave"_s)](size_t i) {
        Q_EMIT grid.rowChosen(int(i));
        cmdSave(i);
    };
    roads.push_back(replayed("Product chosen, saved, list anew", 1, save, kVariants));
    return roads;
}

std::vector<Road> ListRoads::customers() {
    const QWidget& screen = this->screen(u"frmVerwaltungKunden"_s);
    const auto search = [&screen](const QString& field, std::function<QString(size_t)> text) {
        return [input = screen.findChild<QLineEdit*>(field), text = std::move(text),
                cmdSearch = click(screen, u"cmdSearch"_s)](size_t i) {
            input->setText(text(i));
            cmdSearch(i);
            input->clear();
        };
    };
    const auto number = [this](size_t i) { return m_work.callers.at(i).number; };
    const auto beginning = [](size_t i) { return QChar(char16_t(u'a' + i)) + u"e%"_s; };
    const QWidget& all = this->screen(u"frmVerwaltungKunden"_s);
    auto* orders = all.findChild<QComboBox*>(u"combo_Sorting"_s);
    return {
        replayed("Customers: searched by number", 5, search(u"txt_Telefon"_s, number), kVariants),
        replayed("Customers: searched by beginning of name", 2, search(u"txt_Name"_s, beginning), kVariants),
        replayed("Customers: \"Alle Kunden\"", 1, click(all, u"cmdAllClients"_s)),
        replayed(
            "Customers: sorted, each of the orders in turn", orders->count(),
            [&grid = gridOf(all), orders](size_t i) {
                Q_EMIT orders->activated(int(i));
                readPage(grid);
            },
            orders->count())};
}

std::vector<Road> ListRoads::preOrders() {
    using namespace modAuftragswesenVorbestellungen;
    const QWidget& list = screen(u"frmAuftragswesenVorbestellungen"_s);
    return {replayed("Pre-order of 8 lines stored, and deleted", 1,
                     [this](size_t) { DeleteVorbestellung(SaveVorbestellung(m_preOrder)); }),
            replayed(
                "Pre-order opened", 8, [this](size_t i) { OpenVorbestellung(m_opened, qint64(i + 1) * 20); },
                kVariants),
            replayed("Pre-orders: all listed", 1, click(list, u"cmdShowAll"_s)),
            replayed("Alarm check", 1, [this](size_t) { CheckVorbestellungAlarm(m_services.navigation); })};
}

std::vector<Road> ListRoads::webOrders() {
    const auto parsing = [this](const std::string& name, int orders) {
        return replayed(name, 1, [text = webAnswer(orders)](size_t) {
            modInternetBestellungen::ParseWebShopBestellungen(text);
        });
    };
    return {parsing("Web shop's answer of 1,000 orders", 1000),
            parsing("Web shop's answer of 10,000 orders", 10'000)};
}

std::vector<Road> ListRoads::draft() {
    const auto key = [this](orders::WorkingOrder& order, size_t i) {
        order.BestellungGrid.endEdit(int(i % kLines), Col::Kurzzeichen, m_work.codes.at(i % 1000).keyed);
    };
    return {{"Keyed code with the draft kept, beside without", 50,
             [this, key](size_t i) {
                 // Between two keys of a person the draft is written.
                 m_draft.findChild<QTimer*>()->stop();
                 key(m_kept, i);
             },
             [this, key](size_t i) { key(m_unkept, i); }, kDraftAim},
            {"Draft of 8 lines written, off the way",
             1,
             [this](size_t i) {
                 m_kept.ChooseKonditionen(QString::number(i));
                 m_draft.flush();
             },
             {}}};
}

} // namespace bench
