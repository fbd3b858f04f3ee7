#include "app/Doctor.h"

#include "controllers/ControllerDefaults.h"
#include "controllers/LVController.h"
#include "controllers/ProbeDialogue.h"
#include "controllers/ProbeReply.h"
#include "effects/EffectNotice.h"
#include "effects/dynamicMusic/AbsMusicEffect.h"
#include "support/audio/AudioCapManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/DataFile.h"
#include "system/BuildInfo.h"
#include "system/ConsoleText.h"
#include "system/RunningProgram.h"
#include "system/ScreenCheck.h"
#include "ui/FindingList.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QStandardPaths>
#include <QTranslator>
#include <algorithm>
#include <cstring>

namespace {

constexpr char kOption[] = "--doctor";
constexpr int kReplyMs = 6000;
constexpr int kSilenceMs = 30;
const QString kGood = QStringLiteral("  [+] ");
const QString kNeutral = QStringLiteral("  [ ] ");
const QString kBad = QStringLiteral("  [!] ");

/// As the program has stored it; read here because its own reader sets broken files aside.
template <typename Key>
QString storedText(const Key& key)
{
    QString reason;
    const auto bytes = readDataFile(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                        QStringLiteral("/Lumivar/app.json"),
                                    &reason);
    return QJsonDocument::fromJson(bytes.value_or(QByteArray()))
        .object()
        .value(QLatin1String(key.key))
        .toString();
}

/// The one that the user has chosen in the program, else the system's, else English.
void loadLanguage(QTranslator& translator)
{
    const auto load = [&](const QString& code) {
        return !code.isEmpty() && translator.load(QStringLiteral(":/languages/lumivar_%1.qm").arg(code));
    };
    if (load(storedText(ConfigKeys::kLanguage)) || load(QLocale::system().name().section(u'_', 0, 0)) ||
        load(QStringLiteral("en")))
        QCoreApplication::installTranslator(&translator);
}

QString indented(const QString& line)
{
    return QStringLiteral("      ") + line + u'\n';
}

} // namespace

bool Doctor::isAsked(int argc, char** argv)
{
    return std::any_of(argv + 1, argv + argc,
                       [](const char* argument) { return std::strcmp(argument, kOption) == 0; });
}

int Doctor::run(int& argc, char** argv)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Lumivar"));
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    QTranslator translator;
    loadLanguage(translator);
    Doctor doctor;
    QCoreApplication::exec();
    printText(doctor.report());
    return doctor.m_devices.isEmpty() ? 1 : 0;
}

Doctor::Doctor(QObject* parent)
    : QObject(parent)
    , m_source(CombinedSerialPortSource::createDefault())
    , m_runningPid(runningProgram())
    , m_waits(1)
{
    examinePorts();
    examineScreen();
    examineSound(); // while the others are waited for
    QMetaObject::invokeMethod(this, &Doctor::finishOne, Qt::QueuedConnection);
}

Doctor::~Doctor() = default;

void Doctor::finishOne()
{
    if (--m_waits == 0)
        QCoreApplication::quit();
}

void Doctor::examinePorts()
{
    const QList<SerialPortRecord> ports = m_source->availablePorts();
    for (const SerialPortRecord& record : ports) {
        if (!record.description.contains(QLatin1String("CH340")))
            continue;
        PortHolder holder = certainHolderOf(record.systemLocation);
        const QString own = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        // Where the system does not tell who has a port open, the thread that drives it does.
        if (!holder.isCertain() && m_runningPid > 0 &&
            hasThread(m_runningPid, LVController::threadName(record.name)))
            holder = {own, m_runningPid};
        const bool isProgram = holder.isCertain() && (holder.pid == m_runningPid || holder.name == own);
        if (isProgram && !hasThread(holder.pid, LVController::threadName(record.name)))
            m_findings.append({record.name, PortFinding::Kind::Asked}); // it has no answer either, so far
        else if (isProgram)
            m_devices += tr("%1：由正在运行的 Lumivar 控制（%2）").arg(record.name).arg(holder.pid);
        else if (holder.isCertain())
            m_findings.append({record.name, PortFinding::Kind::Held, {}, holder});
        else
            ask(record);
    }
    const QList<PortlessAdapter> adapters = m_source->portlessAdapters();
    for (const PortlessAdapter& adapter : adapters)
        m_findings.append(PortFinding::ofAdapter(adapter));
}

void Doctor::ask(const SerialPortRecord& record)
{
    auto* dialogue = new ProbeDialogue(record, this);
    if (!dialogue->start(kReplyMs, 1, kSilenceMs)) {
        const bool isRefused = dialogue->openError() == SerialLine::PermissionError;
        PortFinding finding = isRefused ? PortFinding::ofRefusal(record) : PortFinding::ofSilence(record);
        if (finding.kind == PortFinding::Kind::Held && finding.holder.name.isEmpty())
            finding.holder.name = processName(m_runningPid); // it asks as well
        m_findings.append(finding);
        return;
    }
    ++m_waits;
    const auto end = [this, dialogue] {
        dialogue->dropPort();
        finishOne();
    };
    connect(dialogue, &ProbeDialogue::answered, this, [this, dialogue, end](const QByteArray& raw) {
        onAnswer(dialogue, raw);
        end();
    });
    for (const auto silence : {&ProbeDialogue::timedOut, &ProbeDialogue::lost})
        connect(dialogue, silence, this, [this, dialogue, end] {
            m_findings.append(PortFinding::ofSilence(dialogue->record()));
            end();
        });
}

void Doctor::onAnswer(const ProbeDialogue* dialogue, const QByteArray& raw)
{
    const ProbeReply reply = ProbeReply::parse(raw);
    if (!reply.isValid()) {
        m_findings.append(PortFinding::ofUnknownAnswer(dialogue->record(), raw));
        return;
    }
    m_devices += tr("%1：%2 已就绪").arg(dialogue->portName(), reply.model);
    if (!ControllerDefaults::isKnown(reply.model))
        m_findings.append({dialogue->portName(), PortFinding::Kind::UnknownModel, reply.model});
}

void Doctor::examineSound()
{
    const AudioCapManager* manager = AudioCapManager::instance();
    if (const char* trouble = AbsMusicEffect::sourceTrouble())
        m_sound = kBad + QCoreApplication::translate(EffectNotice::kContext, trouble);
    else
        m_sound = kGood + manager->capturerDesc(manager->defaultCapturer());
}

void Doctor::examineScreen()
{
    ++m_waits;
    checkScreen(this, [this](ScreenWay way) {
        switch (way) {
        case ScreenWay::Direct:
            m_screen = kGood + tr("可以直接读取");
            break;
        case ScreenWay::Portal:
            m_screen = kGood + (storedText(ConfigKeys::kScreenCastToken).isEmpty()
                                    ? tr("由桌面转交，首次使用时会征求您的同意")
                                    : tr("由桌面转交，您已同意"));
            break;
        case ScreenWay::PortalSilent:
            m_screen = kBad + tr("桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。");
            break;
        case ScreenWay::NoPortal:
            m_screen =
                kBad + tr("桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。");
            break;
        case ScreenWay::NoDisplay:
            m_screen = kBad + tr("没有显示器可用。请在桌面会话中运行。");
            break;
        }
        finishOne();
    });
}

QString Doctor::permissions() const
{
    const QString rule = AccessGrant::installedRule();
    if (AccessGrant::commands({}).isEmpty())
        return {};
    return tr("权限") + u'\n' +
           (rule.isEmpty() ? kNeutral + tr("没有安装 udev 规则，接口由用户组决定") : kGood + rule) + u'\n';
}

QString Doctor::report() const
{
    QString text = QStringLiteral("Lumivar %1\n").arg(QLatin1String(BuildInfo::kAppVersion));
    text += m_runningPid > 0 ? tr("程序正在运行（%1）").arg(m_runningPid) : tr("程序没有在运行");
    text += u'\n' + tr("设备") + u'\n';
    for (const QString& device : m_devices)
        text += kGood + device + u'\n';
    if (m_devices.isEmpty() && m_findings.isEmpty())
        text += kBad + FindingList::tr("未发现设备，请连接灯带") + u'\n';
    for (const FindingCard& card : FindingTexts::cards(m_findings, AccessGrant::State::Failed)) {
        text += kBad + card.title + u'\n' + indented(card.advice);
        for (const QString& command : card.commands)
            text += indented(command);
    }
    return text + permissions() + tr("屏幕") + u'\n' + m_screen + u'\n' + tr("声音") + u'\n' + m_sound +
           u'\n';
}
