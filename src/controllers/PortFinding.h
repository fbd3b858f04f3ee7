#pragma once

#include "controllers/PortHolder.h"
#include "controllers/UsbAdapters.h"

#include <QMetaType>
#include <QString>
#include <QVector>

struct SerialPortRecord;

/// Why a port with an adapter of the strips is no device yet, or what is missing about one that is.
struct PortFinding
{
    enum class Kind {
        Asked,        ///< its first answer is waited for
        NotPermitted, ///< detail: the user group that may open it
        Held,         ///< another program has it: the holder, if that can be told
        Silent,       ///< answers nothing, or fails
        Unknown,      ///< detail: how the answer begins, harmless to show; may be empty
        UnknownModel, ///< works, but the table lacks its model, the detail
        NoDriver,     ///< an adapter without a port; `port` is its socket
        TakenOff      ///< likewise, because the holder has the adapter
    };

    QString port;
    Kind kind = Kind::Asked;
    QString detail{};
    PortHolder holder{};

    bool operator==(const PortFinding& other) const
    {
        return port == other.port && kind == other.kind && detail == other.detail && holder == other.holder;
    }

    /// Says the same to the user: what talks by itself begins otherwise each time it is asked.
    bool isLike(const PortFinding& other) const
    {
        return *this == other || (port == other.port && kind == Kind::Unknown && other.kind == kind);
    }

    // All of them look for a holder first; `before` is who it was.

    /// Of a port that the system does not let this program open.
    static PortFinding ofRefusal(const SerialPortRecord& record, const PortHolder& before = {});
    /// Of one that could be opened: another program that has it as well takes the answers.
    static PortFinding ofSilence(const SerialPortRecord& record, const PortHolder& before = {});
    static PortFinding ofUnknownAnswer(const SerialPortRecord& record, const QByteArray& raw,
                                       const PortHolder& before = {});
    static PortFinding ofAdapter(const PortlessAdapter& adapter, const PortHolder& before = {});
};

using PortFindings = QVector<PortFinding>;
Q_DECLARE_METATYPE(PortFindings)
