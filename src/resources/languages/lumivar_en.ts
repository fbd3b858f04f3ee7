<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>Default output (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>Reads the X11 desktop directly. In a Wayland session it sees only some programs.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>The desktop hands its picture over, and asks for your consent the first time.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>Reads the desktop from the system directly.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>Control mode</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>Set current controller only</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>Set All Controllers</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>Installation method</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>From left to right</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>From right to left</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Working mode</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Working condition</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Turn on the light</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Turn off the lights</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Other options</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Submode</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>Light preview</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>Wall color, dimming, minimum light and current limit</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>Wall color...</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>Strip configuration</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>Adjust the number of LEDs until all of them light up.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>Total LEDs:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>DeskDuplManager</name>
    <message>
        <source>%1 (%2 × %3, 主屏幕)</source>
        <translation>%1 (%2 × %3, primary)</translation>
    </message>
    <message>
        <source>%1 (%2 × %3)</source>
        <translation>%1 (%2 × %3)</translation>
    </message>
</context>
<context>
    <name>DeviceControlWidget</name>
    <message>
        <source>子模式</source>
        <translation>Submode</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Turn on the light</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Turn off the lights</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Working mode</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Working condition</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>Hey buddy, it looks like your light strip is having a little trouble. It keeps disconnecting, so it may not be getting enough power. Try plugging it into a USB port on the mainboard, or into a USB hub with its own power supply. If that doesn&apos;t help, please contact after-sales support. We&apos;re really sorry for the inconvenience. Hope it&apos;s sorted soon, good luck! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>There is no display. Run it within a desktop session.</translation>
    </message>
    <message>
        <source>可以直接读取</source>
        <translation>Can be read directly</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>The program is running (%1)</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>Screen</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>Handed over by the desktop, with your consent</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: driven by the running Lumivar (%2)</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>The program is not running</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>Sound</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Permissions</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>Handed over by the desktop, which asks you at the first use</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>No udev rule is installed, so the user’s groups decide</translation>
    </message>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 is ready</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>The desktop has no portal that hands the screen over. Install xdg-desktop-portal and the part of it for this desktop.</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>The desktop’s portal (xdg-desktop-portal) does not answer. Log in again and retry.</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>Marquee mode</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>Monochrome mode</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>Streamer splendor</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>Shadow echocardiography</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>Symphony Mode 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>Symphony Mode 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>Symphony Mode 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>Symphony Mode 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>Symphony Mode 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>Symphony Mode 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>Full screen mode</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>Half screen-top</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>Half screen-down</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>Half screen-left</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>Half screen-right</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>Movie Mode</translation>
    </message>
    <message>
        <source>音乐1</source>
        <translation>Music 1</translation>
    </message>
    <message>
        <source>音乐2</source>
        <translation>Music 2</translation>
    </message>
    <message>
        <source>音乐3</source>
        <translation>Music 3</translation>
    </message>
    <message>
        <source>音乐4</source>
        <translation>Music 4</translation>
    </message>
    <message>
        <source>音乐5</source>
        <translation>Music 5</translation>
    </message>
    <message>
        <source>音乐6</source>
        <translation>Music 6</translation>
    </message>
    <message>
        <source>音乐7</source>
        <translation>Music 7</translation>
    </message>
    <message>
        <source>音乐8</source>
        <translation>Music 8</translation>
    </message>
    <message>
        <source>图像模式</source>
        <translation>Image Mode</translation>
    </message>
    <message>
        <source>音乐模式1</source>
        <translation>Music Mode 1</translation>
    </message>
    <message>
        <source>音乐模式2</source>
        <translation>Music Mode 2</translation>
    </message>
    <message>
        <source>音乐模式3</source>
        <translation>Music Mode 3</translation>
    </message>
    <message>
        <source>音乐模式4</source>
        <translation>Music Mode 4</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>Mirror bands</translation>
    </message>
    <message>
        <source>声色渐变</source>
        <translation>Volume colors</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>Level meters</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>Breathing mood</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>There is no sound source, so the strip stays dark. Connect a loudspeaker or choose another device source.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>The chosen screen is not connected.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>The size of the screen or of the layout does not suit this effect.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>There is no screen picture to follow.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>The current effect is not available. Please choose another one.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>The current working mode is not available. Please choose another one.</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>The screen was not shared, so the strip cannot follow it.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>Ask for the screen</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>The screen picture was interrupted. The strip goes on by itself when it is back.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>Please choose the screens to follow in the desktop&apos;s dialog.</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>There is no screen to read. Start the program in a graphical desktop, or change the scene capture mode in the settings.</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>This desktop offers no screen picture. Install xdg-desktop-portal with the backend for your desktop, or change the scene capture mode in the settings.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>Screen sharing has ended, so the strip no longer follows it.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>Following the screen needs your consent. The desktop will ask you for it.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>No sound server can be reached, so the strip stays dark. Make sure that the system’s sound service, such as PipeWire, is running.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>There has been no sound for a while. Play some music, or choose the source that is playing.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>The report has been saved:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>Feedback fails with:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>The report could not be saved:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>Feedback success</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>正在发送反馈...</source>
        <translation>Sending the feedback...</translation>
    </message>
    <message>
        <source>正在收集日志...</source>
        <translation>Gathering the logs...</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>已复制</source>
        <translation>Copied</translation>
    </message>
    <message>
        <source>允许使用</source>
        <translation>Allow access</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>Connect it to the computer with a USB data cable. It appears here by itself.</translation>
    </message>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>No device found. Please connect a light strip.</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>It was not allowed. Try again, or run these commands in a terminal and log in again.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>The device on the port %1 does not answer</translation>
    </message>
    <message>
        <source>其他程序</source>
        <translation>Another program</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>Please confirm in the system’s dialog.</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>Unplug the strip and plug it in again, or try another cable and USB socket. If it is no strip, all is well.</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>The system has not answered yet. You can also run these commands in a terminal and log in again.</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>The strip’s adapter (%1) has no driver</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>Install or load its driver ch341, then unplug the strip and plug it in again.</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>The strip’s adapter (%1) has been taken over: %2</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>Please run these commands in a terminal, then log in again.</translation>
    </message>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>Looking at the device on the port %1</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>Access has been granted. If the strip stays dark, unplug it and plug it in again. If that does not help, run these commands in a terminal and log in again.</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>Let the users of this computer use the strip. The system asks an administrator once.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>The device on the port %1 is not recognised (%2)</translation>
    </message>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>It may be no strip. If it is one, unplug it and plug it in again, and update Lumivar.</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>The model on the port %1 is not known yet: %2</translation>
    </message>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>Quit that program. The strip is then connected by itself.</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>The port %1 is in use: %2</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>The strip works, but its number of LEDs and their layout are unknown. Set the number, or update Lumivar.</translation>
    </message>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>Stop that program, then unplug the strip and plug it in again. The braille service brltty often does this. Remove it if nobody needs it.</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>Just a moment.</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>No permission to open the port %1</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>Select color</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>Arrow keys change saturation and brightness, Page Up and Page Down the hue</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>Colour wheel</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>Colour of the ends %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>Colour %1, position %2%</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>Drag to move, double-click to change the colour, right-click to delete</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>Double-click to change the colour of both ends</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>Change</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>Select color</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>Click to add a colour</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>Tab goes to the next colour, arrow keys move it, Enter changes, Insert adds, Delete deletes</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>Monochrome mode</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>Set the strip color</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>Symphony mode</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>Screen sync mode</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>Music mode</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>Get the music moving!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>Graphics mode</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>Marquee mode</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>当前版本号：</source>
        <translation>Current version number:</translation>
    </message>
    <message>
        <source>最新版本号：</source>
        <translation>Latest version number:</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>Version information; Problem feedback</translation>
    </message>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>Version information; Problem feedback; Contact Us</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>Send usage information</translation>
    </message>
    <message>
        <source>保存报告...</source>
        <translation>Save report...</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>Sends when the program starts and stops, and its version. Nothing else.</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>Already the latest version</translation>
    </message>
    <message>
        <source>发送反馈</source>
        <translation>Send Feedback</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>Click Update</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>Included: logs, versions, and settings. Personal data is taken out.</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>Comes with logs so we can understand the cause of the program&apos;s failure.</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>Please write down your suggestions or problems</translation>
    </message>
    <message>
        <source>您的联系方式</source>
        <translation>Your contact details;</translation>
    </message>
</context>
<context>
    <name>HomePage</name>
    <message>
        <source>灯光设备</source>
        <translation>Lighting equipment</translation>
    </message>
    <message>
        <source>更多产品</source>
        <translation>More products</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>Strip configuration</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Device name</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>修改快捷键</source>
        <translation>Change shortcut</translation>
    </message>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>Press the key you want in the field. Tab leaves it, Esc cancels.</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>This combination cannot be used: it is taken, or the keyboard has no such key.</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>修改快捷键...</source>
        <translation>Change shortcut...</translation>
    </message>
    <message>
        <source>功能</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Shortcut</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>This desktop does not let programs take keys, so shortcuts do not work here.</translation>
    </message>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>Another program has taken this shortcut. It works again as soon as that program lets it go.</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>The present keyboard has no such key.</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (set by the desktop)</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>The desktop has not given it any keys yet. Please do so in the system’s keyboard settings.</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>The shortcuts were not allowed when the desktop asked. Edit one of them, and it will ask again.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>全开全关切换</source>
        <translation>Full open full concern replacement</translation>
    </message>
    <message>
        <source>切换到下一个模式</source>
        <translation>Switch to the next mode</translation>
    </message>
    <message>
        <source>降低亮度</source>
        <translation>Reduce brightness</translation>
    </message>
    <message>
        <source>提升亮度</source>
        <translation>Boost brightness</translation>
    </message>
    <message>
        <source>切换到上一个模式</source>
        <translation>Switch to previous mode</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>All equipment</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>Settings cannot be saved at the moment. Check the free disk space and whether the settings folder may be written to. They are saved as soon as that works again.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>The installer could not be opened:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>The brightness is limited to protect the power supply.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>Intensity:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>new</source>
        <translation>new</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>Fully open</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>Quanguan</translation>
    </message>
    <message>
        <source>Alt+N</source>
        <translation>Alt+N</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Setup</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Exit</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>A new version has been detected. Do you want to download the latest installation package?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>Downloading the latest installation package</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>Cancel download</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>Device source:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>Select color</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>The download did not finish. Please check the network and try again.</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>The downloaded file cannot be saved. Please check the disk space.</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>The downloaded file is not the right one and was deleted.</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Select All</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Step up</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>Step &amp;down</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>&amp;Basic colors</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>&amp;Pick Screen Color</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>Cursor at %1, %2
Press ESC to cancel</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>&amp;Custom colors</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>&amp;Add to Custom Colors</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>Hu&amp;e:</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>&amp;Sat:</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>&amp;Val:</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>&amp;Red:</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>&amp;Green:</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>Bl&amp;ue:</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>A&amp;lpha channel:</translation>
    </message>
    <message>
        <source>&amp;HTML:</source>
        <translation>&amp;HTML:</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Look in:</source>
        <translation>Look in:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Forward</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Parent folder</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Create new folder</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>List view</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Detail view</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Files of type:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>File &amp;name:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Rename</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Delete</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>Show &amp;hidden files</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;New folder</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>New folder</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 already exists.
Do you want to replace it?</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Folder</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>Type</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Date modified</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Computer</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Close</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>Failed to register% 1. Error:% 2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>Failed to unregister %1. Error: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Undo</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Redo</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cu&amp;t</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Paste</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Select All</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;No</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>Scroll here</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Left edge</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Right edge</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Bottom</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>Page left</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Page up</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>Page right</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Page down</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Scroll left</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Scroll up</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Scroll right</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Scroll down</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Undo</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Redo</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cu&amp;t</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>Copy &amp;Link Location</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Paste</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Select All</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>You hit the close button, you wish?</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>Remember my choice</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>Exit program</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>Minimize to tray</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>Speed:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>渐变</source>
        <translation>Gradient</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>Delete this gradient</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Range</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>Add a new gradient</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>No animations to choose from</translation>
    </message>
    <message>
        <source>动画</source>
        <translation>Animation</translation>
    </message>
</context>
<context>
    <name>SSLOptWidget</name>
    <message>
        <source>把方块拖到LED所在的位置；框选可移动多个，滚轮缩放，右键平移。</source>
        <translation>Drag each square to where its LED is. Drag a box to select several. Wheel: zoom, right button: pan.</translation>
    </message>
    <message>
        <source>宽度：</source>
        <translation>Width:</translation>
    </message>
    <message>
        <source>高度：</source>
        <translation>Height:</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>LED layout</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>Page Up and Page Down select an LED, arrow keys move it, Ctrl+A selects all</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>Screen %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>饱和度</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>视频源</source>
        <translation>Video source</translation>
    </message>
    <message>
        <source>取色范围</source>
        <translation>Color range</translation>
    </message>
    <message>
        <source>自动去黑边</source>
        <translation>Automatic black edge removal</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>Black edges</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>Smoothing</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>Grey protection</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frame rate</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>Stable</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Classic</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>Responsive</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>Calm</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>How black edges are recognised. Stable: an edge goes once it has stayed black. Subtitles, fades and flashes do not mislead it. Classic: each frame is judged by itself, for edges that should go at once.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>Makes changes of colour softer. Responsive: flicker is evened out, and big changes are followed at once. Calm: every change is a slow one, for when the light is too restless. Off: every frame is shown as it is.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>Keeps nearly grey parts of the picture from turning into vivid colours. Raise it if the light jumps in grey or dark scenes, lower it if pale colours look grey. At its lowest it is off.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>How many times a second the screen is read. Automatic: as often as the strip can take it. Lower it to spare the processor.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>%1 per second</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>主界面按钮行为</source>
        <translation>Main Interface Button Behavior</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>Minimize to tray instead of exiting program</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>Start automatically on boot</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>Switch lamp</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>Screen Snapshot</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>Saves a snapshot of the captured screen from time to time.</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>Port Data Summary Log</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>Enable High Order Mode</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>Advanced Settings</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>Saves part of the port data to the log.</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>General;Shortcuts;Advanced</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>Your settings have been saved, please restart the software</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>Deletes all settings at the next start. You will be asked first.</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>Whether to control all devices</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>When ticked, closing the main window leaves the lights working and the program in the tray.</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>Restore Default Settings</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>General;Shortcuts</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>Cleaning up the configuration file requires restarting the application, which will exit Lumivar.</translation>
    </message>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>The interface uses the language chosen at once.</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>模式 %1</source>
        <translation>Pattern% 1</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>Set the light gama value, noting that this affects all light strip devices.</translation>
    </message>
    <message>
        <source>切换下一个工作模式</source>
        <translation>Toggle next working mode</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>Smaller values are brighter, larger ones darker. 1.00 leaves the light as it is.</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>How the screen is read. Try another one when the picture is wrong.</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>Shows more options of the same screen mode, some of them after a restart.</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>Full Screen Mode Editor</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>Starts in the background when you log in.</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>High-order options for same screen mode</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>Scene Capture Mode</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>General Settings</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>Turns on the editor of the full screen mode, in which the sampling position of each LED can be edited.</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>Physical Button Options</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>Open User Configuration Directory</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>What a press of the button on the device does.</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>The folder that holds the settings and the logs.</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>When ticked, the button of any device acts on all devices, else on its own device only.</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>Lights off while the screen is locked</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>The lights go out while the screen is locked or switched off, and come back with it.</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>电源</source>
        <translation>Power supply</translation>
    </message>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>The light is off. Turn it on to see the result on the wall.</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>Wooden wall</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>Restore defaults</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>Natural keeps more shades in dark colors, as the eye sees them. Classic is as in earlier versions.</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>With white on the strip, adjust until the wall looks white, too.</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>Minimum light</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>Cream wall</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>Wall</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>Current of one LED at full white</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>Dimming</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>No LED gets darker than this, and hues stay. 0 is off.</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>White or gray wall</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>Limit the total current</translation>
    </message>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>%1 LEDs take about %2 at full white. Set no more than the power supply is rated for.</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>自然</source>
        <translation>Natural</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>Show white on the strip</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>White of the strip</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>Wall color</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>Light green wall</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Classic</translation>
    </message>
    <message>
        <source>浅蓝墙</source>
        <translation>Light blue wall</translation>
    </message>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>Wall color;Light and power</translation>
    </message>
</context>
</TS>
