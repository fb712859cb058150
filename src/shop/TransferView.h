#pragma once
#include <QString>

namespace shop {

/// What the export of the catalogue and the upload show on their screen, each under the name of its control.
/// It is painted at once, since the export lets no event loop run. What is left out shows nothing.
class TransferView {
  public:
    virtual ~TransferView() = default;

    virtual void setStatus(const QString& /*text*/) {} ///< lblStatus

    virtual void setDateiTyp(const QString& /*text*/) {} ///< lblDateiTyp, the action under way

    virtual void setDateiVerzeichnis(const QString& /*text*/) {} ///< lblDateiVerzeichnis

    virtual void setDateiName(const QString& /*text*/) {} ///< lblDateiName

    virtual void setProgress(int /*value*/) {} ///< ProgressBar

    virtual void setProgressMaximum(int /*value*/) {}

    virtual void showProgressBar(bool /*visible*/) {}

    virtual void addStatusMsg(const QString& /*line*/) {} ///< listStatusMsg

    /// The pointer's wait form.
    virtual void setWaiting(bool /*waiting*/) {}
};

} // namespace shop
