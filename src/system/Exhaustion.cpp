#include "system/Exhaustion.h"

#include "controllers/CrashBlackOut.h"
#include "support/ThreadStart.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QString>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>

namespace {

constexpr int kPatienceMs = 3000;

void (*s_lastAct)() = nullptr;
QtMessageHandler s_handlersBefore[2] = {}; ///< who takes messages over gives them back in the end
char s_crashReason[256] = "";              ///< none

[[noreturn]] void endWithoutThreads()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || app->thread() == QThread::currentThread()) {
        s_lastAct();
        CrashBlackOut::run(); // of a start that was not through, an end that had begun
    } else {
        const auto done = std::make_shared<QSemaphore>();
        const auto act = [done] {
            s_lastAct();
            done->release();
        };
        QMetaObject::invokeMethod(app, act, Qt::QueuedConnection);
        if (!done->tryAcquire(1, kPatienceMs))
            CrashBlackOut::run();
    }
    std::_Exit(EXIT_FAILURE);
}

/// The toolkit's words are all that tells of it.
template <int Layer>
void hearOfThreads(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    s_handlersBefore[Layer](type, context, text);
    const bool isFailure = text.startsWith(QLatin1String("QThread::start: Thread creation error")) ||
                           text.startsWith(QLatin1String("QThread::start: Failed to create thread"));
    if (!isFailure || isThreadStartChecked())
        return;
    s_handlersBefore[Layer](
        QtCriticalMsg, {__FILE__, __LINE__, __func__, context.category},
        QStringLiteral("[main]: The system has no thread to spare, and the program ends"));
    endWithoutThreads();
}

[[noreturn]] void nameReason()
{
    try {
        if (const std::exception_ptr current = std::current_exception())
            std::rethrow_exception(current);
    } catch (const std::bad_alloc&) {
        std::snprintf(s_crashReason, sizeof s_crashReason, "Out of memory: the program ends.");
    } catch (const std::exception& error) {
        std::snprintf(s_crashReason, sizeof s_crashReason, "An exception occurred: %.200s", error.what());
    } catch (...) {
        std::snprintf(s_crashReason, sizeof s_crashReason, "An exception of an unknown kind occurred.");
    }
    std::fprintf(stderr, "%s\n", s_crashReason); // also before there is a crash handler
    std::abort();
}

} // namespace

void endWhenExhausted(void (*lastAct)())
{
    s_lastAct = lastAct;
    std::set_terminate(nameReason);
    const int layer = s_handlersBefore[0] ? 1 : 0;
    s_handlersBefore[layer] = qInstallMessageHandler(nullptr); // known before another thread may speak
    qInstallMessageHandler(layer == 0 ? hearOfThreads<0> : hearOfThreads<1>);
}

const char* crashReason()
{
    return s_crashReason;
}
