<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>Standardausgabe (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>Liest den X11-Desktop direkt. In einer Wayland-Sitzung sind so nur manche Programme zu sehen.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>Der Desktop gibt sein Bild weiter und fragt beim ersten Mal nach Ihrer Zustimmung.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>Liest den Desktop direkt vom System.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>Steuerung</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>Nur aktuellen Controller</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>Alle Controller</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>Montagerichtung</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>Von links nach rechts</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>Von rechts nach links</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Betriebsart</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Einschalten</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Weitere Optionen</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Effekt</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>Lichtvorschau</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>Wandfarbe, Dimmen, Mindesthelligkeit und Strombegrenzung</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>Wandfarbe...</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>Streifen einrichten</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>Passen Sie die Anzahl an, bis alle LEDs leuchten.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>Anzahl der LEDs:</translation>
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
        <translation>%1 (%2 × %3, Hauptbildschirm)</translation>
    </message>
    <message>
        <source>%1 (%2 × %3)</source>
        <translation>%1 (%2 × %3)</translation>
    </message>
</context>
<context>
    <name>DeviceControlWidget</name>
    <message>
        <source>工作状态</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Einschalten</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Effekt</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Betriebsart</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Helligkeit</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>Hallo! Dein LED-Streifen hat wohl ein kleines Problem: Die Verbindung bricht immer wieder ab, vielleicht bekommt er zu wenig Strom. Stecke ihn am besten direkt in einen USB-Anschluss des Mainboards oder in einen USB-Hub mit eigenem Netzteil. Wenn das nicht hilft, wende dich bitte an den Kundendienst. Die Umstände tun uns wirklich leid. Hoffentlich läuft bald alles wieder, viel Erfolg! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>可以直接读取</source>
        <translation>Kann direkt gelesen werden</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>Der Desktop hat kein Portal, das den Bildschirm übergibt. Installieren Sie xdg-desktop-portal und dessen Teil für diesen Desktop.</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>Das Portal des Desktops (xdg-desktop-portal) antwortet nicht. Melden Sie sich neu an und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>Keine udev-Regel installiert, daher entscheiden die Gruppen des Benutzers</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>Es gibt keine Anzeige. Starten Sie es in einer Desktop-Sitzung.</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>Das Programm läuft nicht</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Berechtigungen</translation>
    </message>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>Wird vom Desktop übergeben, der Sie beim ersten Mal fragt</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: vom laufenden Lumivar gesteuert (%2)</translation>
    </message>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 ist bereit</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>Das Programm läuft (%1)</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>Wird mit Ihrer Zustimmung vom Desktop übergeben</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>Lauflicht</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>Einfarbig</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>Farbenfluss</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>Stimmungslicht</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>Farbenspiel 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>Farbenspiel 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>Farbenspiel 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>Farbenspiel 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>Farbenspiel 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>Farbenspiel 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>Obere Hälfte</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>Untere Hälfte</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>Linke Hälfte</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>Rechte Hälfte</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>Kino</translation>
    </message>
    <message>
        <source>音乐1</source>
        <translation>Musik 1</translation>
    </message>
    <message>
        <source>音乐2</source>
        <translation>Musik 2</translation>
    </message>
    <message>
        <source>音乐3</source>
        <translation>Musik 3</translation>
    </message>
    <message>
        <source>音乐4</source>
        <translation>Musik 4</translation>
    </message>
    <message>
        <source>音乐5</source>
        <translation>Musik 5</translation>
    </message>
    <message>
        <source>音乐6</source>
        <translation>Musik 6</translation>
    </message>
    <message>
        <source>音乐7</source>
        <translation>Musik 7</translation>
    </message>
    <message>
        <source>音乐8</source>
        <translation>Musik 8</translation>
    </message>
    <message>
        <source>图像模式</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>音乐模式1</source>
        <translation>Musikmodus 1</translation>
    </message>
    <message>
        <source>音乐模式2</source>
        <translation>Musikmodus 2</translation>
    </message>
    <message>
        <source>音乐模式3</source>
        <translation>Musikmodus 3</translation>
    </message>
    <message>
        <source>音乐模式4</source>
        <translation>Musikmodus 4</translation>
    </message>
    <message>
        <source>声色渐变</source>
        <translation>Pegelfarben</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>Atemlicht</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>Spiegelbänder</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>Pegelsäulen</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>Keine Tonquelle verfügbar, der Streifen bleibt dunkel. Schließen Sie einen Lautsprecher an oder wählen Sie eine andere Tonquelle.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>Der gewählte Bildschirm ist nicht angeschlossen.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>Die Größe des Bildschirms oder des Layouts passt nicht zu diesem Effekt.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>Es gibt kein Bildschirmbild, dem der Effekt folgen kann.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>Die aktuelle Betriebsart ist nicht verfügbar. Bitte eine andere wählen.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>Der aktuelle Effekt ist nicht verfügbar. Bitte einen anderen wählen.</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>Es gibt keinen Bildschirm zum Lesen. Starten Sie das Programm auf einem grafischen Desktop oder ändern Sie in den Einstellungen die Art der Bildschirmerfassung.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>Die Bildschirmfreigabe wurde beendet, der Streifen folgt nicht mehr.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>Bildschirm anfragen</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>Dieser Desktop bietet kein Bildschirmbild an. Installieren Sie xdg-desktop-portal mit dem Backend für Ihren Desktop oder ändern Sie in den Einstellungen die Art der Bildschirmerfassung.</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>Das Bildschirmbild ist unterbrochen. Sobald es wieder da ist, geht es von selbst weiter.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>Um dem Bildschirm zu folgen, ist Ihre Zustimmung nötig. Der Desktop fragt Sie danach.</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>Der Bildschirm wurde nicht freigegeben, daher kann der Streifen ihm nicht folgen.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>Bitte wählen Sie im Dialog des Desktops die Bildschirme aus, denen gefolgt werden soll.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>Kein Sounddienst ist erreichbar, deshalb bleibt der Streifen dunkel. Prüfen Sie, ob der Sounddienst des Systems läuft, etwa PipeWire.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>Seit einer Weile ist nichts zu hören. Spielen Sie Musik ab, oder wählen Sie die Quelle, die gerade spielt.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>Der Bericht wurde gespeichert:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>Das Feedback konnte nicht gesendet werden:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>Der Bericht konnte nicht gespeichert werden:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>Das Feedback wurde gesendet</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>正在发送反馈...</source>
        <translation>Rückmeldung wird gesendet...</translation>
    </message>
    <message>
        <source>正在收集日志...</source>
        <translation>Protokolle werden gesammelt...</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>已复制</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>Verbinden Sie ihn mit einem USB-Datenkabel mit dem Computer. Er erscheint hier von selbst.</translation>
    </message>
    <message>
        <source>允许使用</source>
        <translation>Zugriff erlauben</translation>
    </message>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>Kein Gerät gefunden. Bitte schließen Sie einen LED-Streifen an.</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>Beenden Sie dieses Programm, und stecken Sie den Streifen neu an. Oft ist es der Braille-Dienst brltty. Entfernen Sie ihn, wenn ihn niemand braucht.</translation>
    </message>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>Beenden Sie dieses Programm. Der Streifen wird dann von selbst verbunden.</translation>
    </message>
    <message>
        <source>其他程序</source>
        <translation>Ein anderes Programm</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>Der Anschluss %1 wird benutzt: %2</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>Der Zugriff ist erlaubt. Bleibt der Streifen dunkel, stecken Sie ihn neu an. Hilft das nicht, führen Sie diese Befehle im Terminal aus und melden Sie sich neu an.</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>Bitte bestätigen Sie im Dialog des Systems.</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>Erlauben Sie den Benutzern dieses Computers den Streifen. Das System fragt einmal nach einem Administrator.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>Das Gerät am Anschluss %1 antwortet nicht</translation>
    </message>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>Der Adapter des Streifens (%1) ist belegt: %2</translation>
    </message>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>Vielleicht ist es kein Streifen. Wenn doch, stecken Sie ihn neu an und aktualisieren Sie Lumivar.</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>Der Adapter des Streifens (%1) hat keinen Treiber</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>Stecken Sie den Streifen neu an, oder versuchen Sie es mit einem anderen Kabel oder USB-Anschluss. Ist es kein Streifen, ist alles in Ordnung.</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>Einen Moment bitte.</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>Keine Berechtigung für den Anschluss %1</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>Bitte führen Sie diese Befehle im Terminal aus und melden Sie sich dann neu an.</translation>
    </message>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>Es wurde nicht erlaubt. Versuchen Sie es noch einmal, oder führen Sie diese Befehle im Terminal aus und melden Sie sich neu an.</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>Das System hat noch nicht geantwortet. Sie können auch diese Befehle im Terminal ausführen und sich neu anmelden.</translation>
    </message>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>Das Gerät am Anschluss %1 wird erkannt</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>Das Modell am Anschluss %1 ist noch unbekannt: %2</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>Das Gerät am Anschluss %1 wird nicht erkannt (%2)</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>Der Streifen funktioniert, aber Anzahl und Anordnung seiner LEDs sind unbekannt. Stellen Sie die Anzahl ein, oder aktualisieren Sie Lumivar.</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>Installieren oder laden Sie seinen Treiber ch341, und stecken Sie den Streifen dann neu an.</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>Farbe wählen</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>Farbkreis</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>Pfeiltasten ändern Sättigung und Helligkeit, Bild auf und Bild ab den Farbton</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>Farbe der Enden %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>Farbe %1, Position %2 %</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>Ziehen zum Verschieben, Doppelklick für eine andere Farbe, Rechtsklick zum Löschen</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>Doppelklick ändert die Farbe beider Enden</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>Farbe wählen</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>Klicken, um eine Farbe hinzuzufügen</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>Tab wechselt die Farbe, Pfeiltasten verschieben, Eingabe ändert, Einfg fügt hinzu, Entf löscht</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>Einfarbig</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>Farbe des Streifens festlegen</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>Farbenspiel</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>Bildschirm-Sync</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>Bringt die Musik in Bewegung!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>Grafik</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>Lauflicht</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>保存报告...</source>
        <translation>Bericht speichern...</translation>
    </message>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>Version;Rückmeldung;Kontakt</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>Jetzt aktualisieren</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>Enthalten: Protokolle, Versionen und Einstellungen. Persönliche Angaben werden entfernt.</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>Gesendet wird nur, wann das Programm gestartet und beendet wird und welche Version es hat. Sonst nichts.</translation>
    </message>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>Die Protokolle werden beigefügt, damit wir die Fehlerursache finden können.</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>Nutzungsdaten senden</translation>
    </message>
    <message>
        <source>您的联系方式</source>
        <translation>Ihre Kontaktdaten</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>Version;Rückmeldung</translation>
    </message>
    <message>
        <source>发送反馈</source>
        <translation>Rückmeldung senden</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>Das Programm ist auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>Bitte beschreiben Sie Ihren Vorschlag oder Ihr Problem</translation>
    </message>
    <message>
        <source>当前版本号：</source>
        <translation>Installierte Version:</translation>
    </message>
    <message>
        <source>最新版本号：</source>
        <translation>Neueste Version:</translation>
    </message>
</context>
<context>
    <name>HomePage</name>
    <message>
        <source>灯光设备</source>
        <translation>Beleuchtungsgeräte</translation>
    </message>
    <message>
        <source>更多产品</source>
        <translation>Weitere Produkte</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>Streifen einrichten</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Gerätename</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>Gewünschte Taste im Feld drücken. Tab verlässt es, Esc bricht ab.</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Bestätigen</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>Diese Kombination geht nicht: Sie ist belegt, oder die Tastatur hat keine solche Taste.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>修改快捷键</source>
        <translation>Tastenkürzel ändern</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>Ein anderes Programm belegt dieses Tastenkürzel. Es wirkt, sobald jenes es freigibt.</translation>
    </message>
    <message>
        <source>修改快捷键...</source>
        <translation>Tastenkürzel ändern...</translation>
    </message>
    <message>
        <source>功能</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>Dieser Desktop lässt Programme keine Tasten belegen, daher wirken Tastenkürzel hier nicht.</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>Die jetzige Tastatur hat keine solche Taste.</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (vom Desktop festgelegt)</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>Der Desktop hat ihm noch keine Tasten zugewiesen. Das geht in den Tastatureinstellungen des Systems.</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>Die Tastenkürzel wurden nicht erlaubt, als der Desktop fragte. Wenn Sie eines ändern, fragt er erneut.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>全开全关切换</source>
        <translation>Alle ein- oder ausschalten</translation>
    </message>
    <message>
        <source>提升亮度</source>
        <translation>Helligkeit erhöhen</translation>
    </message>
    <message>
        <source>切换到下一个模式</source>
        <translation>Zum nächsten Modus wechseln</translation>
    </message>
    <message>
        <source>降低亮度</source>
        <translation>Helligkeit verringern</translation>
    </message>
    <message>
        <source>切换到上一个模式</source>
        <translation>Zum vorherigen Modus wechseln</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>Alle Geräte</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>Einstellungen können zurzeit nicht gespeichert werden. Prüfen Sie den freien Speicherplatz und die Schreibrechte des Einstellungsordners. Gespeichert wird, sobald es wieder geht.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>Das Installationspaket konnte nicht geöffnet werden:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>Zum Schutz des Netzteils ist die Helligkeit begrenzt.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>Stärke:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>new</source>
        <translation>neu</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>Startseite</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>Alle ein</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>Alle aus</translation>
    </message>
    <message>
        <source>Alt+N</source>
        <translation>Alt+N</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>Eine neue Version ist verfügbar. Möchten Sie das aktuelle Installationspaket herunterladen?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>Herunterladen abbrechen</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>Das Installationspaket wird heruntergeladen</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>Tonquelle:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>Farbe wählen</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>Der Download wurde nicht abgeschlossen. Bitte prüfen Sie das Netzwerk und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>Die heruntergeladene Datei kann nicht gespeichert werden. Bitte prüfen Sie den Speicherplatz.</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>Die heruntergeladene Datei ist nicht die richtige und wurde gelöscht.</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Erhöhen</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>&amp;Verringern</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>&amp;Grundfarben</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>Farbe vom &amp;Bildschirm wählen</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>Zeiger bei %1, %2
Zum Abbrechen ESC drücken</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>Be&amp;nutzerdefinierte Farben</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>Zu benutzerdefinierten Farben hin&amp;zufügen</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>&amp;Farbton:</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>&amp;Sättigung:</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>H&amp;elligkeit:</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>&amp;Rot:</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>Gr&amp;ün:</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>Bla&amp;u:</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>A&amp;lphakanal:</translation>
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
        <translation>Suchen in:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Übergeordneter Ordner</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Neuen Ordner erstellen</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Dateityp:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>Datei&amp;name:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>&amp;Versteckte Dateien anzeigen</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;Neuer Ordner</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Neuer Ordner</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 ist bereits vorhanden.
Möchten Sie die Datei ersetzen?</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Ordner</translation>
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
        <translation>Größe</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Geändert am</translation>
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
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>%1 konnte nicht registriert werden. Fehler: %2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>%1 konnte nicht freigegeben werden. Fehler: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
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
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>Hierher scrollen</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Linker Rand</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Anfang</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Rechter Rand</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>Seite nach links</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Seite nach oben</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>Seite nach rechts</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Seite nach unten</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Nach links scrollen</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Nach oben scrollen</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Nach rechts scrollen</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Nach unten scrollen</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>&amp;Linkadresse kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>Sie haben auf „Schließen“ geklickt. Was möchten Sie tun?</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>Auswahl merken</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>Programm beenden</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>In den Infobereich minimieren</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>Tempo:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>删除</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>Diesen Farbverlauf löschen</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>Neuen Farbverlauf hinzufügen</translation>
    </message>
    <message>
        <source>渐变</source>
        <translation>Farbverlauf</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>Keine Animationen verfügbar</translation>
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
        <translation>Ziehen Sie jedes Quadrat an den Platz seiner LED. Ein Rahmen wählt mehrere aus. Mausrad: Zoom, rechte Taste: Verschieben.</translation>
    </message>
    <message>
        <source>宽度：</source>
        <translation>Breite:</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>高度：</source>
        <translation>Höhe:</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>LED-Anordnung</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>Bild auf und Bild ab wählen eine LED, Pfeiltasten verschieben sie, Strg+A wählt alle</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>Bildschirm %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>视频源</source>
        <translation>Bildquelle</translation>
    </message>
    <message>
        <source>取色范围</source>
        <translation>Farbbereich</translation>
    </message>
    <message>
        <source>自动去黑边</source>
        <translation>Schwarze Ränder entfernen</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>Schwarze Ränder</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>Glättung</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>Grauschutz</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>Stabil</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Klassisch</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>Reaktionsschnell</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>Ruhig</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>Wie schwarze Ränder erkannt werden. Stabil: Ein Rand entfällt erst, wenn er schwarz geblieben ist. Untertitel, Überblendungen und Blitze stören nicht. Klassisch: Jedes Bild wird für sich beurteilt, wenn Ränder sofort entfallen sollen.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>Macht Farbwechsel weicher. Reaktionsschnell: Flackern wird geglättet, großen Änderungen wird sofort gefolgt. Ruhig: Jede Änderung läuft langsam ab, falls das Licht zu unruhig ist. Aus: Jedes Bild wird unverändert gezeigt.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>Verhindert, dass fast graue Bildteile zu kräftigen Farben werden. Höher stellen, wenn das Licht in grauen oder dunklen Szenen springt, niedriger, wenn blasse Farben grau wirken. Ganz unten ist der Schutz aus.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>Wie oft pro Sekunde der Bildschirm gelesen wird. Automatisch: so oft, wie der Streifen es aufnimmt. Niedriger stellen, um den Prozessor zu schonen.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>%1 pro Sekunde</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>是</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>Steuert alle Geräte</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>Schreibt einen Teil der Portdaten ins Protokoll.</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>Taste am Gerät</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>Um die Konfigurationsdateien zu löschen, muss die Anwendung neu gestartet werden. Lumivar wird jetzt beendet.</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>Allgemein;Tastenkürzel</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>Der Ordner mit den Einstellungen und Protokollen.</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>Startet bei der Anmeldung im Hintergrund.</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>Ist dies aktiviert, leuchten die Streifen nach dem Schließen des Hauptfensters weiter, und das Programm bleibt im Infobereich.</translation>
    </message>
    <message>
        <source>切换下一个工作模式</source>
        <translation>Nächste Betriebsart</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>Ihre Einstellungen wurden gespeichert. Bitte starten Sie das Programm neu.</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>模式 %1</source>
        <translation>Modus %1</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>Erweitert</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>Allgemein;Tastenkürzel;Erweitert</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>Was ein Druck auf die Taste am Gerät bewirkt.</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>主界面按钮行为</source>
        <translation>Schaltflächen des Hauptfensters</translation>
    </message>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>Die Oberfläche erscheint sofort in der gewählten Sprache.</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>Art der Bildschirmerfassung</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>Bildschirmfotos</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>Licht ein/aus</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>Ist dies aktiviert, wirkt die Taste jedes Geräts auf alle Geräte, sonst nur auf das eigene.</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>Wie der Bildschirm gelesen wird. Bei einem falschen Bild hilft vielleicht eine andere Art.</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>Editor für den Vollbildmodus</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>Löscht alle Einstellungen beim nächsten Start. Vorher wird nachgefragt.</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>Konfigurationsordner öffnen</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>Zeigt weitere Optionen für Bildschirm-Sync, einige erst nach einem Neustart.</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>Bildschirm-Sync: erweiterte Optionen</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>Erweiterten Modus aktivieren</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>Gammawert des Lichts. Er wirkt auf alle LED-Streifen.</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>In den Infobereich minimieren, statt zu beenden</translation>
    </message>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>Schaltet den Editor des Vollbildmodus ein, in dem sich die Abtastposition jeder LED ändern lässt.</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>Speichert ab und zu ein Bild der Bildschirmerfassung.</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>Protokoll der Portdaten</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>Standardeinstellungen wiederherstellen</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>Kleinere Werte sind heller, größere dunkler. 1.00 lässt das Licht, wie es ist.</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>Mit dem System starten</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>Die Lichter gehen aus, solange der Bildschirm gesperrt oder aus ist, und kehren mit ihm zurück.</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>Licht aus, solange der Bildschirm gesperrt ist</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>电源</source>
        <translation>Netzteil</translation>
    </message>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>Das Licht ist aus. Schalten Sie es ein, um die Wirkung an der Wand zu sehen.</translation>
    </message>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>%1 LEDs brauchen bei vollem Weiß etwa %2. Stellen Sie nicht mehr ein, als das Netzteil liefert.</translation>
    </message>
    <message>
        <source>自然</source>
        <translation>Natürlich</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>Dimmen</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Klassisch</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>Keine LED wird dunkler als dies, Farbtöne bleiben. 0 ist aus.</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>Weiße oder graue Wand</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>Holzwand</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>Natürlich bewahrt mehr Abstufungen im Dunkeln, so wie das Auge sieht. Klassisch ist wie in früheren Versionen.</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>Hellgrüne Wand</translation>
    </message>
    <message>
        <source>浅蓝墙</source>
        <translation>Hellblaue Wand</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>Strom einer LED bei vollem Weiß</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>Wandfarbe;Licht und Strom</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>Gesamtstrom begrenzen</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>Mindesthelligkeit</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>Zeigt der Streifen Weiß, so einstellen, dass auch die Wand weiß wirkt.</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>Cremefarbene Wand</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Eigene Einstellung</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>Wandfarbe</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>Weiß des Streifens</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>Wand</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>Weiß auf dem Streifen zeigen</translation>
    </message>
</context>
</TS>
