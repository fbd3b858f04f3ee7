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
#include <sched.h>
#include <sys/mman.h>
#include <sys/personality.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kSequences = 10000;
constexpr int kBatch = 500;
constexpr unsigned kMostSeconds = 240; ///< for a batch, on a busy machine; else it hangs
constexpr int kFound = 3;              ///< exit code: something is wrong, as the task says

/// What to live through, and where a child tells what it is at and what was wrong. The two share it.
struct Task
{
    quint64 seed = 1;
    quint64 order = 0;
    int from = 0;
    int sequences = kSequences;
    char steps[8192] = ""; ///< instead of random ones

    int sequence = 0;
    char wrong[1024] = "";

    quint64 seedOf(int number) const { return seed * 1000003 + quint64(number) * 2 + 1; }
};

// --- the child

void setUpMachine(const QString& home)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1"); // one library less that has a loop of its own
    qputenv("LUMIVAR_DEFAULTS", "none");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
        qunsetenv(variable);
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, QFile::encodeName(home));
    // The program's own data, but for the pictures and one model, small in every way.
    QDir::setCurrent(home);
    QDir().mkdir("controler_config");
    QDir().mkpath("effects/colorful");
    QFile::link(DATA "/effects/groups.json", "effects/groups.json");
    QFile::link(DATA "/controler_config/LV0127.json", "controler_config/LV0127.json");
    QFile models("controler_config/LVController.json");
    if (models.open(QIODevice::WriteOnly))
        models.write(R"({"LV0127": {"nbLeds": 8, "brightness": 0.8,
            "icon": "strip.bmp", "image": "strip.bmp"}})");
    const QImage picture(4, 4, QImage::Format_RGB32);
    picture.save("strip.bmp");
    for (int i = 3; i <= 8; ++i)
        picture.save(QString("effects/colorful/ColorMap_%1.png").arg(i));
}

[[noreturn]] void live(Task& task)
{
    const QTemporaryDir home(QFile::exists("/dev/shm") ? "/dev/shm/device-life-XXXXXX" : "");
    setUpMachine(home.path());
    int argc = 1;
    char name[] = "device-life";
    char* argv[] = {name, nullptr};
    QApplication program(argc, argv);
    program.setProperty("isAutoStartup", true); // no window that is painted
    log4cplus::BasicConfigurator::doConfigure();
    if (!qEnvironmentVariableIsSet("SHOW_LOG")) {
        log4cplus::Logger::getRoot().setLogLevel(log4cplus::OFF_LOG_LEVEL);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }
    QThreadPool::globalInstance()->setExpiryTimeout(500);
    cv::setNumThreads(1);
    cpu_set_t here; // threads that take turns do so much faster on one processor
    CPU_ZERO(&here);
    CPU_SET(sched_getcpu(), &here);
    sched_setaffinity(0, sizeof here, &here);

    DeviceLife life;
    QString wrong;
    for (int i = task.from; i < task.from + task.sequences && wrong.isEmpty(); ++i) {
        task.sequence = i;
        VirtualTime::setOrder(*task.steps ? task.order : task.seedOf(i));
        wrong = life.live(*task.steps ? stepsFrom(task.steps) : randomSteps(task.seedOf(i)));
    }
    qstrncpy(task.wrong, wrong.toUtf8().constData(), sizeof task.wrong);
    QDir(home.path()).removeRecursively();
    fflush(nullptr);
    _exit(wrong.isEmpty() ? 0 : kFound); // what was started for good need not be taken apart
}

// --- the parent

Task* shared(int memory)
{
    return static_cast<Task*>(mmap(nullptr, sizeof(Task), PROT_READ | PROT_WRITE, MAP_SHARED, memory, 0));
}

/// A process that lives through some sequences.
struct Batch
{
    explicit Batch(const Task& what)
    {
        const int memory = memfd_create("task", 0);
        if (ftruncate(memory, sizeof(Task)) != 0)
            qFatal("no memory");
        task = shared(memory);
        *task = what;
        fflush(nullptr);
        process = fork();
        if (process == 0) // the libraries' threads are the parent's
            execl("/proc/self/exe", "device-life", "--task", QByteArray::number(memory).constData(), nullptr);
        ::close(memory);
    }
    QString result(int status) const
    {
        if (WIFSIGNALED(status))
            return WTERMSIG(status) == SIGALRM ? "it hangs" : strsignal(WTERMSIG(status));
        return WEXITSTATUS(status) == 0 ? QString() : QString::fromUtf8(task->wrong);
    }

    Task* task; // a page or two for each, for as long as this program runs
    pid_t process;
};

/// What is wrong with it in a process of its own.
QString wrongWith(const Steps& steps, quint64 order)
{
    Task task;
    qstrncpy(task.steps, (' ' + toString(steps)).toLatin1().constData(), sizeof task.steps); // never empty
    task.order = order;
    task.sequences = 1;
    const Batch batch(task);
    int status = 0;
    waitpid(batch.process, &status, 0);
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

void tell(const Task& task, const QString& wrong)
{
    quint64 order = task.seedOf(task.sequence);
    const Steps steps = randomSteps(order);
    printf("Sequence %d of seed %llu: %s\n  %s\n", task.sequence, task.seed, qPrintable(wrong),
           qPrintable(toString(steps)));
    if (wrongWith(steps, order).isEmpty()) {
        printf("Alone it goes well: what was before it counts. Again:\n"
               "  scripts/device-life.sh --seed %llu --from %d --sequences %d\n",
               task.seed, task.from, task.sequence - task.from + 1);
        return;
    }
    if (!wrongWith(steps, 0).isEmpty())
        order = 0; // the threads' order does not matter
    const Steps fewer = shortened(steps, order);
    printf("Shortened: %s\n  scripts/device-life.sh --order %llu --steps '%s'\n",
           qPrintable(wrongWith(fewer, order)), order, qPrintable(toString(fewer)));
}

/// False once something was wrong.
bool liveAll(const Task& whole, int jobs)
{
    std::vector<Batch> running;
    int next = whole.from;
    const int end = whole.from + whole.sequences;
    while (next < end || !running.empty()) {
        for (; next < end && int(running.size()) < jobs; next += running.back().task->sequences) {
            Task part = whole;
            part.from = next;
            part.sequences = qMin(kBatch - next % kBatch, end - next);
            running.emplace_back(part);
        }
        int status = 0;
        const pid_t ended = wait(&status);
        const auto batch = std::find_if(running.begin(), running.end(),
                                        [ended](const Batch& each) { return each.process == ended; });
        if (batch == running.end())
            continue;
        const Task task = *batch->task;
        const QString wrong = batch->result(status);
        running.erase(batch);
        if (wrong.isEmpty())
            continue;
        for (const Batch& each : running)
            kill(each.process, SIGKILL);
        tell(task, wrong);
        return false;
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
    // Addresses and hashes that are the same each time: their order may count.
    qputenv("QT_HASH_SEED", "0");
    if ((personality(0xFFFFFFFF) & ADDR_NO_RANDOMIZE) == 0) {
        personality(ADDR_NO_RANDOMIZE);
        execv("/proc/self/exe", argv);
    }
    Task task;
    int jobs = 2;
    setvbuf(stdout, nullptr, _IOLBF, 0);
    for (int i = 1; i + 1 < argc; i += 2) {
        const QByteArray name(argv[i]), value(argv[i + 1]);
        if (name == "--task") {
            alarm(kMostSeconds);
            live(*shared(value.toInt()));
        } else if (name == "--steps")
            qstrncpy(task.steps, value.constData(), sizeof task.steps);
        else if (name == "--order")
            task.order = value.toULongLong();
        else if (name == "--seed")
            task.seed = value.toULongLong();
        else if (name == "--from")
            task.from = value.toInt();
        else if (name == "--sequences")
            task.sequences = value.toInt();
        else if (name == "--jobs")
            jobs = value.toInt();
    }
    if (*task.steps) {
        const QString wrong = wrongWith(stepsFrom(task.steps), task.order);
        printf("%s\n", wrong.isEmpty() ? "All is well." : qPrintable(wrong));
        return wrong.isEmpty() ? 0 : 1;
    }
    const bool isWell = (argc > 1 || liveFormerFinds()) && liveAll(task, jobs);
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    printf("%d sequences, %ld s of processor time\n", task.sequences,
           used.ru_utime.tv_sec + used.ru_stime.tv_sec);
    return isWell ? 0 : 1;
}
