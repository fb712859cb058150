#pragma once
#include <QString>

namespace shop {

/// What the export of the catalogue and the upload show on their screen, each under the name of its control.
/// It is painted at once, since the export lets no event loop run.
class TransferView {
  public:
    virtual ~TransferView() = default;
    virtual void setStatus(const QString& text) = 0;           ///< lblStatus
    virtual void setDateiTyp(const QString& text) = 0;         ///< lblDateiTyp, the action under way
    virtual void setDateiVerzeichnis(const QString& text) = 0; ///< lblDateiVerzeichnis
    virtual void setDateiName(const QString& text) = 0;        ///< lblDateiName
    virtual void setProgress(int value) = 0;                   ///< ProgressBar
    virtual void setProgressMaximum(int value) = 0;
    virtual void showProgressBar(bool visible) = 0;
    virtual void addStatusMsg(const QString& line) = 0; ///< listStatusMsg
    /// The pointer's wait form.
    virtual void setWaiting(bool waiting) = 0;
};

} // namespace shop
