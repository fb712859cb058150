#include "platform/form/OfferList.h"
#include <QHeaderView>
#include <QMouseEvent>

namespace platform {

OfferList::OfferList(QWidget* window) : QTreeWidget(window) {
    setObjectName(QStringLiteral("offers"));
    setAccessibleName(tr("Passende Artikel"));
    setFocusPolicy(Qt::NoFocus);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::Box);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(1);
    hide();
}

void OfferList::setOffers(std::vector<CellOffer> offers) {
    m_offers = std::move(offers);
    clear();
    if (m_offers.empty())
        return hide();
    const int columns = int(m_offers.front().texts.size());
    setColumnCount(columns);
    header()->setSectionResizeMode(columns - 1, QHeaderView::Stretch);
    for (const CellOffer& offer : m_offers) {
        auto* item = new QTreeWidgetItem(this, offer.texts);
        item->setTextAlignment(columns - 1, Qt::AlignRight | Qt::AlignVCenter);
    }
    chooseFirst();
}

int OfferList::chosen() const {
    return qMax(0, indexOfTopLevelItem(currentItem()));
}

void OfferList::chooseFirst() {
    setCurrentItem(topLevelItem(0));
}

void OfferList::step(int by) {
    if (QTreeWidgetItem* next = topLevelItem(chosen() + by))
        setCurrentItem(next);
}

void OfferList::showAt(const QRect& cell) {
    const int frame = 2 * frameWidth();
    constexpr int kGap = 16;
    int width = frame + kGap;
    for (int column = 0; column < columnCount(); ++column)
        width += sizeHintForColumn(column);
    const int height = frame + count() * sizeHintForRow(0);
    const bool below = cell.bottom() + height < window()->height();
    width = qMax(width, cell.width());
    const int left = qMax(0, qMin(cell.left(), window()->width() - width));
    setGeometry(left, below ? cell.bottom() + 1 : qMax(0, cell.top() - height), width, height);
    raise();
    show();
}

void OfferList::mousePressEvent(QMouseEvent* event) {
    if (QTreeWidgetItem* item = itemAt(event->pos()); item && event->button() == Qt::LeftButton) {
        setCurrentItem(item);
        Q_EMIT offerClicked(chosen());
    }
}

} // namespace platform
