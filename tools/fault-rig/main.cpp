// Starts the program on a display of its own, once for each number: the call of the kind with that number
// fails, or with a plus behind the kind that one and all that follow. Number 0 only counts. Usage: fault-rig
// KIND[+] NUMBER...     Prints lines of KIND NUMBER CALLS and what became of it.
#include "FaultRun.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <climits>
#include <cstdio>

namespace {

int kindOf(const QString& name)
{
    int kind = 0;
    while (kind < kFaultKinds && name != QLatin1String(kFaults[kind].name))
        ++kind;
    return kind;
}

void count(FaultRun& run)
{
    for (int kind = 0; kind < kFaultKinds; ++kind)
        std::printf("%s 0 %ld counted\n", kFaults[kind].name, run.calls(static_cast<FaultKind>(kind)));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    QString name = QString::fromLocal8Bit(argc > 2 ? argv[1] : "");
    const bool goesOn = name.endsWith('+');
    const int kind = kindOf(goesOn ? name.chopped(1) : name);
    if (kind == kFaultKinds) {
        std::fprintf(stderr, "Usage: fault-rig KIND[+] NUMBER...\n");
        return 2;
    }
    VirtualDisplay display(QSize(1280, 900));
    QProcess manager;
    if (!display.start())
        return 2;
    display.startProgram(manager, "openbox", {"--sm-disable"});
    if (!manager.waitForStarted())
        return 2;
    bool isWell = true;
    for (int i = 2; i < argc; ++i) {
        const long number = QByteArray(argv[i]).toLong();
        const auto fault = static_cast<FaultKind>(kind);
        FaultRun run(&display);
        QElapsedTimer elapsed;
        elapsed.start();
        if (number > 0)
            run.fail(fault, number, goesOn ? LONG_MAX : number);
        run.start();
        run.use();
        const QStringList finds = run.judge();
        isWell = isWell && finds.isEmpty();
        if (number < 1)
            count(run);
        QString outcome = !finds.isEmpty() ? "FIND " + finds.join("; ") : "fine";
        if (!run.ending().isEmpty())
            outcome += finds.isEmpty() ? " but " : "; ";
        std::printf("%s %ld %ld %s%s\n", qPrintable(name), number, run.failed(fault), qPrintable(outcome),
                    qPrintable(run.ending()));
        std::fprintf(stderr, "%lld ms\n", static_cast<long long>(elapsed.elapsed()));
        if (!finds.isEmpty() || qEnvironmentVariableIsSet("LUMIVAR_FAULT_LOG"))
            std::fputs(qPrintable(run.report()), stderr);
        std::fflush(stdout);
    }
    manager.kill();
    manager.waitForFinished();
    return isWell ? 0 : 1;
}
