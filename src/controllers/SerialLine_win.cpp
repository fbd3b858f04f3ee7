#include "controllers/SerialLine.h"

#include "controllers/WindowsSerial.h"

#include <QWinEventNotifier>

#include <utility>
#include <windows.h>

namespace {

constexpr int kReadBufferBytes = 4096;
constexpr DWORD kCancelMs = 200; ///< for a driver to let go of a transfer

/// One overlapped read or write. The system writes to it until it is over.
struct Transfer
{
    Transfer() { overlapped.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr); }
    ~Transfer() { CloseHandle(overlapped.hEvent); }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    /// Notes how the call went that began it; nothing, or the error.
    DWORD begin(BOOL isDone)
    {
        const DWORD code = isDone != 0 ? ERROR_SUCCESS : GetLastError();
        isPending = code == ERROR_SUCCESS || code == ERROR_IO_PENDING; // its event tells in both cases
        return isPending ? ERROR_SUCCESS : code;
    }

    OVERLAPPED overlapped = {};
    QByteArray bytes;
    bool isPending = false;
};

} // namespace

/// A read of one byte waits for the line to speak, and another takes what came with it: communication events
/// and time-outs that return early are nothing that every driver can do.
struct SerialLine::Private
{
    explicit Private(SerialLine* owner)
        : q(owner)
    {
        connect(&readEnd, &QWinEventNotifier::activated, q, [this] { onReadEnd(); });
        connect(&writeEnd, &QWinEventNotifier::activated, q, [this] { onWriteEnd(); });
    }

    DWORD beginRead();
    DWORD beginWrite();
    void onReadEnd();
    void onWriteEnd();
    /// Ends the transfer and gives its error; nothing while it is under way.
    bool end(Transfer& transfer, DWORD& size, DWORD& code) const;
    void setError(SerialPortError newError, DWORD code);
    void fail(DWORD code, SerialPortError otherwise);

    SerialLine* q;
    HANDLE port = INVALID_HANDLE_VALUE;
    SerialPortError error = NoError;
    QString errorString;
    std::unique_ptr<Transfer> reading;
    std::unique_ptr<Transfer> writing;
    QByteArray received;
    bool isMoreThere = false; ///< and is being read
    QByteArray waiting;       ///< behind what is being written
    QWinEventNotifier readEnd{q};
    QWinEventNotifier writeEnd{q};
};

DWORD SerialLine::Private::beginRead()
{
    isMoreThere = false;
    if (reading->isPending || received.size() >= kReadBufferBytes)
        return ERROR_SUCCESS;
    COMSTAT queues = {};
    DWORD lineErrors = 0; // tell of a disturbed byte, which nobody asks for
    if (ClearCommError(port, &lineErrors, &queues) == 0)
        return GetLastError();
    isMoreThere = queues.cbInQue > 0;
    const int room = kReadBufferBytes - received.size();
    reading->bytes.resize(qBound(1, static_cast<int>(queues.cbInQue), room));
    return reading->begin(ReadFile(port, reading->bytes.data(), static_cast<DWORD>(reading->bytes.size()),
                                   nullptr, &reading->overlapped));
}

DWORD SerialLine::Private::beginWrite()
{
    if (writing->isPending || waiting.isEmpty())
        return ERROR_SUCCESS;
    writing->bytes = std::exchange(waiting, {});
    return writing->begin(WriteFile(port, writing->bytes.constData(),
                                    static_cast<DWORD>(writing->bytes.size()), nullptr,
                                    &writing->overlapped));
}

bool SerialLine::Private::end(Transfer& transfer, DWORD& size, DWORD& code) const
{
    const bool isDone = GetOverlappedResult(port, &transfer.overlapped, &size, FALSE) != 0;
    code = isDone ? ERROR_SUCCESS : GetLastError();
    if (code == ERROR_IO_INCOMPLETE)
        return false; // the notifier is late, and the next one has begun
    ResetEvent(transfer.overlapped.hEvent);
    return std::exchange(transfer.isPending, false);
}

void SerialLine::Private::onReadEnd()
{
    DWORD size = 0;
    DWORD code = 0;
    if (!end(*reading, size, code))
        return;
    received.append(reading->bytes.constData(), static_cast<int>(size));
    if (code == ERROR_SUCCESS)
        code = beginRead();
    if (!received.isEmpty() && !isMoreThere) // what came together is told of together
        emit q->readyRead();
    if (code != ERROR_SUCCESS)
        fail(code, ReadError);
}

void SerialLine::Private::onWriteEnd()
{
    DWORD size = 0;
    DWORD code = 0;
    if (!end(*writing, size, code))
        return;
    if (code == ERROR_SUCCESS) {
        waiting.prepend(writing->bytes.mid(static_cast<int>(size)));
        code = beginWrite();
    }
    if (code != ERROR_SUCCESS)
        fail(code, WriteError);
    else
        emit q->bytesWritten();
}

void SerialLine::Private::setError(SerialPortError newError, DWORD code)
{
    error = newError;
    errorString = qt_error_string(static_cast<int>(code));
}

void SerialLine::Private::fail(DWORD code, SerialPortError otherwise)
{
    setError(WindowsSerial::lineError(code, otherwise), code);
    emit q->errorOccurred(error);
}

SerialLine::SerialLine(QObject* parent)
    : QObject(parent)
    , d(new Private(this))
{
}

SerialLine::~SerialLine()
{
    close();
}

bool SerialLine::open(const QString& location)
{
    close();
    d->error = NoError;
    d->port = CreateFileW(reinterpret_cast<const wchar_t*>(location.utf16()), GENERIC_READ | GENERIC_WRITE, 0,
                          nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    COMMTIMEOUTS timeouts = {}; // what is begun takes the time it takes
    DCB dcb = {};
    dcb.DCBlength = sizeof dcb;
    bool isReady = isOpen() && GetCommState(d->port, &dcb);
    if (isReady) {
        WindowsSerial::applySettings(dcb);
        isReady = SetCommState(d->port, &dcb) && SetCommTimeouts(d->port, &timeouts);
    }
    DWORD code = isReady ? ERROR_SUCCESS : GetLastError();
    if (isReady) {
        clear();
        d->reading = std::make_unique<Transfer>();
        d->writing = std::make_unique<Transfer>();
        code = d->beginRead();
    }
    if (!isReady || code != ERROR_SUCCESS) {
        d->setError(WindowsSerial::openError(code), code);
        close();
        return false;
    }
    d->readEnd.setHandle(d->reading->overlapped.hEvent);
    d->writeEnd.setHandle(d->writing->overlapped.hEvent);
    d->readEnd.setEnabled(true);
    d->writeEnd.setEnabled(true);
    return true;
}

bool SerialLine::isOpen() const
{
    return d->port != INVALID_HANDLE_VALUE;
}

void SerialLine::close()
{
    if (!isOpen())
        return;
    d->readEnd.setEnabled(false);
    d->writeEnd.setEnabled(false);
    CancelIoEx(d->port, nullptr); // those that another thread began as well
    for (auto* each : {&d->reading, &d->writing}) {
        const auto transfer = each;
        if (*transfer && (*transfer)->isPending &&
            WaitForSingleObject((*transfer)->overlapped.hEvent, kCancelMs) != WAIT_OBJECT_0)
            transfer->release(); // its driver may still write to it
        transfer->reset();
    }
    CloseHandle(std::exchange(d->port, INVALID_HANDLE_VALUE));
    d->received.clear();
    d->waiting.clear();
}

std::intptr_t SerialLine::handle() const
{
    return reinterpret_cast<std::intptr_t>(d->port);
}

void SerialLine::write(const QByteArray& bytes)
{
    if (!isOpen())
        return;
    d->waiting.append(bytes);
    if (const DWORD code = d->beginWrite())
        d->fail(code, WriteError);
}

qint64 SerialLine::bytesToWrite() const
{
    if (!isOpen())
        return 0;
    return d->waiting.size() + (d->writing->isPending ? d->writing->bytes.size() : 0);
}

QByteArray SerialLine::readAll()
{
    if (!isOpen())
        return {};
    const QByteArray bytes = std::exchange(d->received, {});
    if (const DWORD code = d->beginRead())
        d->fail(code, ReadError);
    return bytes;
}

void SerialLine::clear()
{
    d->received.clear();
    d->waiting.clear();
    // The read that is under way goes on: ending it would look like an error of the line.
    PurgeComm(d->port, PURGE_TXABORT | PURGE_TXCLEAR | PURGE_RXCLEAR);
}

SerialLine::SerialPortError SerialLine::error() const
{
    return d->error;
}

QString SerialLine::errorString() const
{
    return d->errorString;
}
