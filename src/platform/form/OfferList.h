#pragma once
#include <QStringList>
#include <QTreeWidget>
#include <functional>
#include <vector>

namespace platform {

/// What a text that is being keyed into a cell may mean.
struct CellOffer {
    QStringList texts;          ///< one a column of the list, the last one at the right
    std::function<void()> take; ///< puts it into the cell's row in place of the text
};

/// The offers under the cell that is edited. It never has the focus: every key stays with the editor, and the
/// first offer is what the text alone means.
class OfferList : public QTreeWidget {
    Q_OBJECT
  public:
    /// Over the other children of `window`.
    explicit OfferList(QWidget* window);

    void setOffers(std::vector<CellOffer> offers);

    int count() const { return int(m_offers.size()); }

    /// 0 unless the user went on to another one.
    int chosen() const;

    const CellOffer& offer(int row) const { return m_offers.at(size_t(row)); }

    void chooseFirst();
    /// Goes up or down by one row, where there is one.
    void step(int by);
    /// Under the cell, or above it where the window ends. `cell` is in the window's coordinates.
    void showAt(const QRect& cell);

  Q_SIGNALS:
    void offerClicked(int row);

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    std::vector<CellOffer> m_offers;
};

} // namespace platform
