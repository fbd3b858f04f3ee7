// Runs every kept input of every target, and a number of mutations of each that is the same every time. For
// builds without the fuzzer's engine: a find that is kept stays found.
#include "Fuzz.h"

#include <QDir>
#include <QRandomGenerator>

#include <csignal>
#include <cstdio>

namespace {

constexpr int kMutations = 500; // of each target

QByteArray current;
QByteArray currentName;

/// Leaves the input of a find where the next run can be given it.
void onFind(int signal)
{
    std::signal(signal, SIG_DFL);
    std::fprintf(stderr, "find: %s, kept as fuzz-find\n", currentName.constData());
    if (std::FILE* file = std::fopen(FUZZ_FIND, "wb")) {
        std::fwrite(current.constData(), 1, static_cast<size_t>(current.size()), file);
        std::fclose(file);
    }
    std::raise(signal);
}

QByteArray mutated(const QByteArray& bytes, const QByteArray& other, QRandomGenerator& random)
{
    QByteArray result = bytes;
    const auto place = [&] { return int(random.bounded(quint32(result.size()) + 1)); };
    for (int changes = 1 + random.bounded(4); changes > 0; --changes) {
        const int at = place();
        switch (random.bounded(6)) {
        case 0:
            result.truncate(at);
            break;
        case 1:
            result.insert(at, char(random.bounded(256)));
            break;
        case 2:
            result.remove(at, 1 + random.bounded(8));
            break;
        case 3:
            result.insert(at, other.mid(random.bounded(other.size() + 1), random.bounded(32)));
            break;
        case 4:
            result.insert(at, QByteArrayLiteral("99999999999"));
            break;
        default:
            if (at < result.size())
                result[at] = char(result[at] ^ (1 << random.bounded(8)));
        }
    }
    return result;
}

void run(const FuzzTarget& target, const QByteArray& name, const QByteArray& bytes)
{
    current = bytes;
    currentName = name;
    target.run(bytes);
}

} // namespace

int main(int argc, char** argv)
{
    const QByteArray find = argc > 2 ? readFuzzFile(QString::fromLocal8Bit(argv[2])) : QByteArray();
    beginFuzzing();
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGALRM, SIGTERM})
        std::signal(signal, onFind);
    int inputs = 0;
    for (const FuzzTarget& target : qAsConst(fuzzTargets())) {
        if (argc > 1 && qstrcmp(argv[1], target.name) != 0)
            continue;
        if (argc > 2) { // a find, alone
            run(target, argv[2], find);
            ++inputs;
            continue;
        }
        QVector<QByteArray> seeds;
        const QDir folder(QStringLiteral(FUZZ_CORPUS "/") + QLatin1String(target.name));
        for (const QString& file : folder.entryList(QDir::Files)) {
            seeds.append(readFuzzFile(folder.filePath(file)));
            run(target, folder.filePath(file).toLocal8Bit(), seeds.last());
        }
        if (seeds.isEmpty()) {
            std::fprintf(stderr, "no inputs in %s\n", qPrintable(folder.path()));
            return 1;
        }
        QRandomGenerator random(1);
        for (int i = 0; i < kMutations; ++i) {
            const QByteArray& seed = seeds.at(random.bounded(seeds.size()));
            const QByteArray& other = seeds.at(random.bounded(seeds.size()));
            run(target, QByteArray(target.name) + " mutation " + QByteArray::number(i),
                mutated(seed, other, random));
        }
        inputs += seeds.size() + kMutations;
    }
    std::printf("%d targets, %d inputs\n", fuzzTargets().size(), inputs);
    return inputs > 0 ? 0 : 1;
}
