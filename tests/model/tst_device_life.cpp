// Lives through random sequences; each batch in a process of its own, so that a crash or a hang is a find
// like any other. What is wrong is shortened to the steps that it needs.
//
//     tst_device_life [--sequences N] [--from FIRST] [--seed SEED] [--jobs J]
//     tst_device_life --steps "plug(0,0) wait(0,3)" [--order O]      one sequence, again
//
// SHOW_LOG=1 in the environment has the program's log lines printed.

#include "DeviceLife.h"
#include "VirtualTime.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QThreadPool>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <log4cplus/configurator.h>
#include <log4cplus/logger.h>
#include <opencv2/core.hpp>
#include <sys/mman.h>
#include <sys/personality.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kBatch = 500;
constexpr unsigned kMostSeconds = 240; ///< for a batch, on a busy machine; else it hangs
constexpr int kFound = 3;              ///< exit code: something is wrong, as the report says

struct Arguments
{
    QString steps;
    quint64 order = 0;
    quint64 seed = 1;
    int from = 0;
    int sequences = 3000;
    int jobs = 2;
    int report = -1; ///< the child's
};

/// Where a child tells what it is at, and what was wrong.
struct Report
{
    int sequence;
    char wrong[1024];
};

quint64 seedOf(const Arguments& arguments, int sequence)
{
    return arguments.seed * 1000003 + quint64(sequence) * 2 + 1;
}

// --- the child

[[noreturn]] void live(const Arguments& arguments, Report& report)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1"); // one library less that has a loop of its own
    qputenv("QT_HASH_SEED", "0");
    qputenv("LUMIVAR_DEFAULTS", "none");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        qunsetenv(variable);
    const QTemporaryDir home(QFile::exists("/dev/shm") ? "/dev/shm/device-life-XXXXXX" : "");
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, QFile::encodeName(home.path()));
    // The program's own data, but for one model, small in every way.
    QDir::setCurrent(home.path());
    QDir().mkdir("controler_config");
    QFile::link(DATA "/effects", "effects");
    QFile::link(DATA "/controler_config/LV0127.json", "controler_config/LV0127.json");
    QFile models("controler_config/LVController.json");
    if (models.open(QIODevice::WriteOnly))
        models.write(R"({"LV0127": {"nbLeds": 8, "brightness": 0.8,
            "icon": "strip.bmp", "image": "strip.bmp"}})");
    models.close();

    int argc = 1;
    char name[] = "device-life";
    char* argv[] = {name, nullptr};
    QImage(1, 1, QImage::Format_RGB32).save("strip.bmp");
    QApplication program(argc, argv);
    program.setProperty("isAutoStartup", true); // no window that is painted
    log4cplus::BasicConfigurator::doConfigure();
    if (!qEnvironmentVariableIsSet("SHOW_LOG")) {
        log4cplus::Logger::getRoot().setLogLevel(log4cplus::OFF_LOG_LEVEL);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }
    QThreadPool::globalInstance()->setExpiryTimeout(500);
    cv::setNumThreads(1);
    DeviceLife life;
    QString wrong;
    for (int i = arguments.from; i < arguments.from + arguments.sequences && wrong.isEmpty(); ++i) {
        report.sequence = i;
        const quint64 seed = seedOf(arguments, i);
        VirtualTime::setOrder(arguments.steps.isEmpty() ? seed : arguments.order);
        wrong = life.live(arguments.steps.isEmpty() ? randomSteps(seed) : stepsFrom(arguments.steps));
    }
    qstrncpy(report.wrong, wrong.toUtf8().constData(), sizeof report.wrong);
    QDir(home.path()).removeRecursively();
    fflush(nullptr);
    _exit(wrong.isEmpty() ? 0 : kFound); // what was started for good need not be taken apart
}

// --- the parent

/// A process that lives through some sequences.
class Batch
{
public:
    explicit Batch(const Arguments& arguments)
    {
        const int memory = memfd_create("report", 0);
        if (ftruncate(memory, sizeof(Report)) != 0)
            qFatal("no memory");
        m_report = map(memory);
        fflush(nullptr);
        m_process = fork();
        if (m_process == 0) // the libraries' threads are the parent's
            execl("/proc/self/exe", "device-life", "--report", text(quint64(memory)).constData(), "--seed",
                  text(arguments.seed).constData(), "--from", text(quint64(arguments.from)).constData(),
                  "--sequences", text(quint64(arguments.sequences)).constData(), "--order",
                  text(arguments.order).constData(), "--steps", arguments.steps.toLatin1().constData(),
                  nullptr);
        ::close(memory);
    }
    static Report* map(int memory)
    {
        return static_cast<Report*>(
            mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED, memory, 0));
    }
    pid_t process() const { return m_process; }
    /// Of the sequence that it came to.
    int sequence() const { return m_report->sequence; }
    QString result(int status) const
    {
        if (WIFSIGNALED(status))
            return WTERMSIG(status) == SIGALRM ? "it hangs" : strsignal(WTERMSIG(status));
        return WEXITSTATUS(status) == 0 ? QString() : QString::fromUtf8(m_report->wrong);
    }

private:
    static QByteArray text(quint64 number) { return QByteArray::number(number); }

    Report* m_report; // a page for each, for as long as this program runs
    pid_t m_process = 0;
};

/// What is wrong with it in a process of its own.
QString wrongWith(const Steps& steps, quint64 order)
{
    Arguments arguments;
    arguments.steps = toString(steps);
    arguments.order = order;
    arguments.sequences = 1;
    const Batch batch(arguments);
    int status = 0;
    waitpid(batch.process(), &status, 0);
    return batch.result(status);
}

/// Leaves out whatever it needs not to go wrong, in halves first.
Steps shortened(Steps steps, quint64 order)
{
    const auto isWrong = [order](const Steps& some) { return !wrongWith(some, order).isEmpty(); };
    for (int length = steps.size() / 2; length > 0; length /= 2) {
        for (int at = 0; at < steps.size();) {
            Steps fewer = steps;
            fewer.remove(at, qMin(length, fewer.size() - at));
            if (isWrong(fewer))
                steps = fewer;
            else
                at += length;
        }
    }
    for (int i = 0; i < steps.size(); ++i) { // and has each step as simple as can be
        for (const int value : {0, 1, 2, steps[i].value % 6, steps[i].value % 15}) {
            Steps simpler = steps;
            simpler[i].value = value;
            if (value < steps[i].value && isWrong(simpler)) {
                steps = simpler;
                break;
            }
        }
    }
    return steps;
}

void tell(const Arguments& arguments, int sequence, const QString& wrong)
{
    const quint64 seed = seedOf(arguments, sequence);
    printf("Sequence %d of seed %llu: %s\n", sequence, arguments.seed, qPrintable(wrong));
    Steps steps = arguments.steps.isEmpty() ? randomSteps(seed) : stepsFrom(arguments.steps);
    quint64 order = arguments.steps.isEmpty() ? seed : arguments.order;
    printf("  %s\n", qPrintable(toString(steps)));
    if (wrongWith(steps, order).isEmpty()) {
        const int first = sequence - sequence % kBatch;
        printf("Alone it goes well: what was before it counts. Again:\n"
               "  scripts/device-life.sh --seed %llu --from %d --sequences %d\n",
               arguments.seed, first, sequence - first + 1);
        return;
    }
    if (!wrongWith(steps, 0).isEmpty())
        order = 0; // the threads' order does not matter
    steps = shortened(steps, order);
    printf("Shortened: %s\n  scripts/device-life.sh --order %llu --steps '%s'\n",
           qPrintable(wrongWith(steps, order)), order, qPrintable(toString(steps)));
}

/// False once something was wrong.
bool liveAll(const Arguments& arguments)
{
    std::vector<Batch> running;
    int next = arguments.from;
    const int end = arguments.from + arguments.sequences;
    while (next < end || !running.empty()) {
        while (next < end && int(running.size()) < arguments.jobs) {
            Arguments part = arguments;
            part.from = next;
            part.sequences = qMin(kBatch - next % kBatch, end - next);
            next += part.sequences;
            running.emplace_back(part);
        }
        int status = 0;
        const pid_t ended = wait(&status);
        const auto batch = std::find_if(running.begin(), running.end(),
                                        [ended](const Batch& each) { return each.process() == ended; });
        if (batch == running.end())
            continue;
        const QString wrong = batch->result(status);
        if (!wrong.isEmpty()) {
            for (const Batch& each : running) {
                if (each.process() != ended)
                    kill(each.process(), SIGKILL);
            }
            tell(arguments, batch->sequence(), wrong);
            return false;
        }
        running.erase(batch);
    }
    return true;
}

/// Sequences that went wrong once.
bool liveFormerFinds()
{
    QFile file(FINDS);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const int order = line.indexOf(' ');
        if (line.startsWith('#') || order < 0)
            continue;
        const QString wrong = wrongWith(stepsFrom(line.mid(order + 1)), line.left(order).toULongLong());
        if (wrong.isEmpty())
            continue;
        printf("A former find is back: %s\n  %s\n", qPrintable(wrong), line.constData());
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    // Addresses that are the same each time: their order may count.
    if ((personality(0xFFFFFFFF) & ADDR_NO_RANDOMIZE) == 0) {
        personality(ADDR_NO_RANDOMIZE);
        execv("/proc/self/exe", argv);
    }
    Arguments arguments;
    setvbuf(stdout, nullptr, _IOLBF, 0);
    for (int i = 1; i + 1 < argc; i += 2) {
        const QByteArray name(argv[i]);
        const QByteArray value(argv[i + 1]);
        if (name == "--steps")
            arguments.steps = value;
        else if (name == "--order")
            arguments.order = value.toULongLong();
        else if (name == "--seed")
            arguments.seed = value.toULongLong();
        else if (name == "--from")
            arguments.from = value.toInt();
        else if (name == "--sequences")
            arguments.sequences = value.toInt();
        else if (name == "--jobs")
            arguments.jobs = value.toInt();
        else if (name == "--report")
            arguments.report = value.toInt();
    }
    if (arguments.report >= 0) {
        alarm(kMostSeconds);
        live(arguments, *Batch::map(arguments.report));
    }
    if (!arguments.steps.isEmpty()) {
        const QString wrong = wrongWith(stepsFrom(arguments.steps), arguments.order);
        printf("%s\n", wrong.isEmpty() ? "All is well." : qPrintable(wrong));
        return wrong.isEmpty() ? 0 : 1;
    }
    const bool isWell = (argc > 1 || liveFormerFinds()) && liveAll(arguments);
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    printf("%d sequences, %ld s of processor time\n", arguments.sequences,
           used.ru_utime.tv_sec + used.ru_stime.tv_sec);
    return isWell ? 0 : 1;
}
