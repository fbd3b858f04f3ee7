#include "app/FindingTexts.h"

namespace {

using Kind = PortFinding::Kind;
using State = AccessGrant::State;

} // namespace

QString FindingTexts::holderName(const PortHolder& holder)
{
    if (holder.name.isEmpty())
        return tr("其他程序");
    return QStringLiteral("%1 (%2)").arg(holder.name,
                                         holder.isCertain() ? QString::number(holder.pid) : QString(u'?'));
}

FindingCard FindingTexts::permissionCard(const PortFinding& finding, State access)
{
    FindingCard card{tr("没有权限打开接口 %1").arg(finding.port), {}};
    const bool isPossible = AccessGrant::isPossible();
    if (isPossible && access != State::Failed && access != State::Granted) {
        const bool isUnderWay = access == State::Pending || access == State::Late;
        card.access = isUnderWay ? FindingCard::Access::Pending : FindingCard::Access::Offered;
    }
    switch (access) {
    case State::Pending:
        card.advice = tr("请在系统的对话框中确认。");
        return card;
    case State::Granted:
        card.advice = tr("权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。");
        break;
    case State::Cancelled:
        card.advice = tr("没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。");
        break;
    case State::Late:
        card.advice = tr("系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。");
        break;
    case State::Idle:
        if (isPossible) {
            card.advice = tr("允许这台电脑的用户使用灯带。系统会要求管理员确认一次。");
            return card;
        }
        [[fallthrough]];
    case State::Failed:
        card.advice = tr("请在终端中运行下面的命令，然后重新登录。");
        break;
    }
    card.commands = AccessGrant::commands(finding.detail);
    return card;
}

FindingCard FindingTexts::cardOf(const PortFinding& finding, State access)
{
    const QString& port = finding.port;
    switch (finding.kind) {
    case Kind::Asked:
        return {tr("正在识别接口 %1 上的设备").arg(port), tr("请稍候片刻。")};
    case Kind::NotPermitted:
        return permissionCard(finding, access);
    case Kind::Held:
        return {tr("%2 正在使用接口 %1").arg(port, holderName(finding.holder)),
                tr("请退出该程序，灯带随后会自动连接。")};
    case Kind::Silent:
        return {tr("接口 %1 上的设备没有应答").arg(port),
                tr("请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。")};
    case Kind::Unknown:
        return {tr("接口 %1 上的设备无法识别（%2）").arg(port, finding.detail),
                tr("它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。")};
    case Kind::UnknownModel:
        return {tr("接口 %1 上的型号 %2 尚不熟悉").arg(port, finding.detail),
                tr("灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。")};
    case Kind::NoDriver:
        return {tr("灯带适配器（%1）没有驱动程序").arg(port),
                tr("请安装或加载它的驱动程序 ch341，然后重新插拔。"), AccessGrant::driverCommands()};
    case Kind::TakenOff:
        return {tr("%2 占用了灯带适配器（%1）").arg(port, holderName(finding.holder)),
                tr("请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。")};
    }
    return {};
}

FindingCards FindingTexts::cards(const PortFindings& findings, State access)
{
    FindingCards cards;
    for (const PortFinding& finding : findings)
        cards.append(cardOf(finding, access));
    return cards;
}

QString FindingTexts::notice(const PortFindings& findings)
{
    QStringList lines;
    for (const PortFinding& finding : findings) {
        if (finding.kind == Kind::Asked)
            continue;
        const FindingCard card = cardOf(finding, State::Failed); // there is no button
        lines += tr("%1。%2").arg(card.title, card.advice);
        lines += card.commands;
    }
    return lines.join(u'\n');
}
