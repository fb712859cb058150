#pragma once
#include "platform/Navigation.h"
#include <QString>

/// What the rest of the program asks of the main window.
namespace desks {

/// The numbers in the status box, and the line beside them.
class StatusBox {
  public:
    virtual ~StatusBox() = default;
    /// The next transaction number.
    virtual void showAuftragsNummer(const QString& number) = 0;
    virtual void showVorbestellungCount(qint64 count) = 0;
    virtual void showKundenTotal(qint64 count) = 0;
    /// What has just happened, in one short sentence ("Auftrag 4054 verbucht"). It stands until the next one
    /// and is told to a screen reader.
    virtual void showMessage(const QString& message) = 0;
};

/// StatusBox::showMessage, where there is one.
inline void showMessage(const platform::Navigation& navigation, const QString& message) {
    if (auto* box = platform::mainDesk<StatusBox>(navigation))
        box->showMessage(message);
}

/// Reaches a user who looks elsewhere.
class Attention {
  public:
    virtual ~Attention() = default;
    /// The main window tells that something in it wants to be seen: where it is minimised it comes back,
    /// where it is not in front it asks for attention, with a sound. It takes the keys from nobody.
    virtual void callAttention() = 0;
};

/// Where calls come in.
class CallDesk {
  public:
    virtual ~CallDesk() = default;
    /// A call as the line delivers it.
    virtual void BasicCAPI32_IncomingCall(const QString& GerufeneNr, const QString& AnrufNr,
                                          const QString& AnrufFormat) = 0;
};

} // namespace desks
