#pragma once
#include <QString>
#include <chrono>

namespace platform {

/// Which telephone line is used and how, as the section [Telefon] of `tavolino.ini` tells it:
///
///     [Telefon]
///     Leitung=sip              keine (or left out) | sip | capi | monitor
///     Wiederholung=5           seconds until a lost line is tried again (1 to 600); SIP doubles them, up
///                              to 60
///     Landesvorwahl=41         the own country's code: "+41..." and "0041..." go on as "0..."; empty: never
///     AnruferListe=5000        so many calls the caller list keeps; 0 or left out: all
///
///     SipAdresse=0.0.0.0       local address to listen on; 0.0.0.0 is every network card
///     SipPort=5060             local port, UDP and TCP
///     SipRegistrar=192.168.1.1 router or PBX to register at, "host" or "host:port"; empty: only listen
///     SipBenutzer=620          name of the extension
///     SipPasswort="..."        in double quotes if it holds one of , ; = " \ (the last two as \" and \\)
///     SipAnmeldename=          name for the log-in where it is not the extension's
///     SipDomain=               domain of the extension where it is not the registrar's host
///     SipNurBekannte=nein      ja: calls come from the registrar and from local addresses only
///     SipAblauf=300            seconds that a registration is to hold (60 to 86400); 60 for a PBX beyond
///                              the router, so that the router keeps the way back open
///
///     CapiController=1         number of the ISDN controller; 0 is every controller
///
///     MonitorHost=192.168.1.1  router that offers the call monitor
///     MonitorPort=1012
struct LineSettings {
    enum class Kind { None, Sip, Capi, Monitor, Unknown };

    /// A port is 0 when the file does not hold a number from 1 to 65535; the line then refuses to start.
    struct Sip {
        QString address = QStringLiteral("0.0.0.0");
        int port = 5060;
        QString registrar; ///< host alone
        int registrarPort = 5060;
        QString user;
        QString password;
        QString loginName; ///< never empty if there is a user
        QString domain;    ///< never empty if there is a registrar
        std::chrono::seconds expiry{300};
        bool onlyKnown = false;
    };

    struct Capi {
        int controller = 1;
    };

    struct Monitor {
        QString host;
        int port = 1012;
    };

    Kind kind = Kind::None;
    QString kindText; ///< `Leitung` as written, for the message about an unknown one
    std::chrono::milliseconds retry{5000};
    QString countryCode = QStringLiteral("41"); ///< digits; "" for none
    int keptCalls = 0;                          ///< 0 for all
    Sip sip;
    Capi capi;
    Monitor monitor;
    /// What is not to be understood in the file, a sentence a line; "" for nothing. It counts as left out,
    /// but for a port, see above. A number beyond the limits told above is understood, and counts as the
    /// limit.
    QString problem;

    /// A file that is not there gives the defaults, which means no line. Never throws.
    static LineSettings read(const QString& iniFile);
};

} // namespace platform
