#include "orders/frmLetzteBestellungen.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QTableView>
#include <QVBoxLayout>

using common::connectGuarded;
using common::Origin;
using modLetzteBestellungen::LetzteBestellung;
using Bestellungen = std::vector<LetzteBestellung>;

namespace {

constexpr int kMostOrders = 5;
constexpr int kShownRows = 3;

enum Column { Datum, Total, Positionen, ColumnCount };

} // namespace

class frmLetzteBestellungen::Model : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    const Bestellungen& bestellungen() const { return m_bestellungen; }

    void setBestellungen(Bestellungen bestellungen) {
        if (bestellungen.empty() && m_bestellungen.empty())
            return;
        beginResetModel();
        m_bestellungen = std::move(bestellungen);
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(m_bestellungen.size());
    }

    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : int(ColumnCount);
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const LetzteBestellung& bestellung = m_bestellungen.at(size_t(index.row()));
        if (role == Qt::DisplayRole)
            return text(bestellung, index.column());
        if (role == Qt::ToolTipRole)
            return toolTip(bestellung);
        if (role == Qt::TextAlignmentRole)
            return int(Qt::AlignVCenter | (index.column() == Total ? Qt::AlignRight : Qt::AlignLeft));
        return {};
    }

    static QString moment(const LetzteBestellung& bestellung, QStringView form) {
        return bestellung.bestellt ? common::formatDate(*bestellung.bestellt, form) : QString();
    }

  private:
    static QString text(const LetzteBestellung& bestellung, int column) {
        if (column == Datum)
            return moment(bestellung, u"DD/MM/YYYY");
        return column == Total ? common::formatNumber(bestellung.dbl_TotalMitMWSt, u"0.00")
                               : bestellung.positionen.join(QStringLiteral(", "));
    }

    static QString toolTip(const LetzteBestellung& bestellung) {
        QString lines =
            frmLetzteBestellungen::tr("Auftrag %1 vom %2")
                .arg(QString::number(bestellung.lng_TrxNr), moment(bestellung, u"DD/MM/YYYY HH:MM"));
        for (const QString& position : bestellung.positionen)
            lines += QStringLiteral("<br>") + position.toHtmlEscaped();
        return QStringLiteral("<span>") + lines + QStringLiteral("</span>");
    }

    Bestellungen m_bestellungen;
};

/// A few rows without a heading, taken by a click or Enter.
class frmLetzteBestellungen::List : public QTableView {
  public:
    using QTableView::QTableView;

    QString emptyText;

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (enter && currentIndex().isValid())
            Q_EMIT clicked(currentIndex());
        else
            QTableView::keyPressEvent(event);
    }

    void focusInEvent(QFocusEvent* event) override {
        QTableView::focusInEvent(event);
        if (event->reason() != Qt::MouseFocusReason && !currentIndex().isValid())
            selectRow(0);
    }

    void paintEvent(QPaintEvent* event) override {
        QTableView::paintEvent(event);
        if (model()->rowCount() > 0)
            return;
        QPainter painter(viewport());
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText);
    }
};

frmLetzteBestellungen::frmLetzteBestellungen(QWidget* parent) :
    QGroupBox(parent), m_model(new Model(this)), m_list(new List(this)) {
    setTitle(tr("Letzte Bestellungen"));
    setUpList();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->addWidget(m_list);
    setKunde(-1);
    readNow();

    // Behind all that waits to be painted.
    m_timer.setSingleShot(true);
    connectGuarded(Origin::Timer, &m_timer, &QTimer::timeout, this, [this] { readNow(); });
    connectGuarded(Origin::User, m_list, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        // What still stands there of another customer is not his.
        if (!m_waits)
            Q_EMIT bestellungChosen(m_model->bestellungen().at(size_t(index.row())).lng_TrxNr);
    });
}

void frmLetzteBestellungen::setUpList() {
    m_list->setModel(m_model);
    m_list->setObjectName(QStringLiteral("LetzteBestellungenGrid"));
    m_list->setAccessibleName(tr("Letzte Bestellungen des Kunden"));
    m_list->setToolTip(
        tr("Ein Klick oder die Eingabetaste übernimmt die Positionen zu den heutigen Preisen."));
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setTabKeyNavigation(false);
    m_list->setShowGrid(false);
    m_list->setWordWrap(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->verticalHeader()->hide();
    m_list->horizontalHeader()->hide();
    setUpSizes();
}

void frmLetzteBestellungen::setUpSizes() {
    constexpr int kMargins = 8;
    const QFontMetrics metrics = m_list->fontMetrics();
    m_list->setColumnWidth(Datum, metrics.horizontalAdvance(QStringLiteral("00/00/0000")) + kMargins);
    m_list->setColumnWidth(Total, metrics.horizontalAdvance(QStringLiteral("0000.00")) + kMargins);
    m_list->horizontalHeader()->setSectionResizeMode(Positionen, QHeaderView::Stretch);
    const int height = metrics.height() + 2;
    m_list->verticalHeader()->setMinimumSectionSize(height);
    m_list->verticalHeader()->setDefaultSectionSize(height);
    m_list->setMinimumHeight(height * kShownRows + 2 * m_list->frameWidth());
    m_list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
}

void frmLetzteBestellungen::initStyleOption(QStyleOptionGroupBox* option) const {
    QGroupBox::initStyleOption(option);
    if (!m_lastOrdered.isEmpty())
        option->text = m_lastOrdered;
}

void frmLetzteBestellungen::setKunde(qint64 kundenId) {
    m_kundenId = kundenId;
    m_waits = true;
    if (!m_timer.isActive())
        m_timer.start();
}

void frmLetzteBestellungen::readNow() {
    if (!m_waits)
        return;
    m_timer.stop();
    if (m_kundenId > 0)
        fill(modLetzteBestellungen::LoadLetzteBestellungen(m_kundenId, kMostOrders),
             tr("Der Kunde bestellt zum ersten Mal."));
    else
        fill({}, tr("Hier stehen die letzten Bestellungen des Kunden."));
    // Not before: what cannot be read still waits.
    m_waits = false;
}

void frmLetzteBestellungen::fill(Bestellungen bestellungen, const QString& emptyText) {
    m_lastOrdered =
        bestellungen.empty()
            ? QString()
            : tr("Zuletzt bestellt am %1").arg(Model::moment(bestellungen.front(), u"DD/MM/YYYY"));
    setAccessibleName(m_lastOrdered.isEmpty() ? title() : m_lastOrdered);
    Q_EMIT filled(!bestellungen.empty());
    m_list->emptyText = emptyText;
    m_model->setBestellungen(std::move(bestellungen));
    // The title.
    update(0, 0, width(), layout()->geometry().top());
}

std::optional<qint64> frmLetzteBestellungen::newest() {
    readNow();
    if (m_model->rowCount() == 0)
        return std::nullopt;
    return m_model->bestellungen().front().lng_TrxNr;
}

void frmLetzteBestellungen::goToList() {
    readNow();
    m_list->setFocus(Qt::ShortcutFocusReason);
}
