<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>Вывод по умолчанию (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>Читает рабочий стол X11 напрямую. В сеансе Wayland видны лишь некоторые программы.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>Рабочий стол сам передаёт изображение и в первый раз спрашивает вашего согласия.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>Читает рабочий стол напрямую из системы.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>Управление</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>Только текущий контроллер</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>Все контроллеры</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>Направление установки</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>Слева направо</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>Справа налево</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Режим работы</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Включить</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Выключить</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Яркость</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Другие параметры</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Подрежим</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>Предпросмотр подсветки</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>Цвет стены...</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>Цвет стены, затемнение, минимальная яркость и ограничение тока</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>Настройка ленты</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>Подберите число так, чтобы горели все светодиоды.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>Всего светодиодов:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>ОК</translation>
    </message>
</context>
<context>
    <name>DeskDuplManager</name>
    <message>
        <source>%1 (%2 × %3, 主屏幕)</source>
        <translation>%1 (%2 × %3, основной)</translation>
    </message>
    <message>
        <source>%1 (%2 × %3)</source>
        <translation>%1 (%2 × %3)</translation>
    </message>
</context>
<context>
    <name>DeviceControlWidget</name>
    <message>
        <source>工作模式</source>
        <translation>Режим работы</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Выключить</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Яркость</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Включить</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Подрежим</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Состояние</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>Привет! Похоже, с твоей лентой небольшая проблема: она то и дело отключается — возможно, ей не хватает питания. Попробуй подключить её к USB-порту на материнской плате или к USB-хабу с отдельным питанием. Если не поможет, обратись в службу поддержки. Нам очень жаль, что так вышло. Надеемся, скоро всё заработает, удачи! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 готово</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Устройства</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>У рабочего стола нет портала, передающего экран. Установите xdg-desktop-portal и его часть для этого рабочего стола.</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Права</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>Звук</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>Программа запущена (%1)</translation>
    </message>
    <message>
        <source>可以直接读取</source>
        <translation>Читается напрямую</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>Передаётся рабочим столом с вашего согласия</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>Программа не запущена</translation>
    </message>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>Передаётся рабочим столом, который спросит вас при первом использовании</translation>
    </message>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>Дисплея нет. Запустите в сеансе рабочего стола.</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: управляется запущенным Lumivar (%2)</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>Правило udev не установлено, решают группы пользователя</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>Портал рабочего стола (xdg-desktop-portal) не отвечает. Войдите в систему заново и повторите.</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>Экран</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>Бегущие огни</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>Один цвет</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>Цветной поток</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>Настроение</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>Переливы 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>Переливы 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>Переливы 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>Переливы 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>Переливы 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>Переливы 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>Весь экран</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>Верхняя часть</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>Нижняя часть</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>Левая часть</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>Правая часть</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>Кино</translation>
    </message>
    <message>
        <source>音乐1</source>
        <translation>Музыка 1</translation>
    </message>
    <message>
        <source>音乐2</source>
        <translation>Музыка 2</translation>
    </message>
    <message>
        <source>音乐3</source>
        <translation>Музыка 3</translation>
    </message>
    <message>
        <source>音乐4</source>
        <translation>Музыка 4</translation>
    </message>
    <message>
        <source>音乐5</source>
        <translation>Музыка 5</translation>
    </message>
    <message>
        <source>音乐6</source>
        <translation>Музыка 6</translation>
    </message>
    <message>
        <source>音乐7</source>
        <translation>Музыка 7</translation>
    </message>
    <message>
        <source>音乐8</source>
        <translation>Музыка 8</translation>
    </message>
    <message>
        <source>图像模式</source>
        <translation>Изображения</translation>
    </message>
    <message>
        <source>音乐模式1</source>
        <translation>Муз. режим 1</translation>
    </message>
    <message>
        <source>音乐模式2</source>
        <translation>Муз. режим 2</translation>
    </message>
    <message>
        <source>音乐模式3</source>
        <translation>Муз. режим 3</translation>
    </message>
    <message>
        <source>音乐模式4</source>
        <translation>Муз. режим 4</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>Уровни звука</translation>
    </message>
    <message>
        <source>声色渐变</source>
        <translation>Цвет звука</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>Зеркало звука</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>Дыхание</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>Нет доступного источника звука, поэтому лента не светится. Подключите динамик или выберите другой источник звука.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>Нет изображения экрана, за которым можно следовать.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>Размер экрана или раскладки не подходит для этого эффекта.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>Выбранный экран не подключён.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>Текущий эффект недоступен. Выберите другой.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>Текущий режим работы недоступен. Выберите другой.</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>Изображение экрана прервалось. Когда оно вернётся, всё продолжится само.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>Запросить экран</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>Нет экрана, который можно прочитать. Запустите программу на графическом рабочем столе или измените способ захвата экрана в настройках.</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>Доступ к экрану не был предоставлен, поэтому лента не может за ним следовать.</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>Этот рабочий стол не предоставляет изображение экрана. Установите xdg-desktop-portal и подходящий к рабочему столу модуль или измените способ захвата экрана в настройках.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>Показ экрана завершён, лента за ним больше не следует.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>Чтобы следовать за экраном, нужно ваше согласие. Рабочий стол спросит вас о нём.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>Выберите в окне рабочего стола экраны, за которыми нужно следовать.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>Звуковой сервер недоступен, поэтому лента не светится. Проверьте, что звуковая служба системы, например PipeWire, запущена.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>Уже некоторое время нет звука. Включите музыку или выберите источник, который играет.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>Отчёт сохранён:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>Не удалось отправить отзыв:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>Не удалось сохранить отчёт:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>Отзыв отправлен</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>正在收集日志...</source>
        <translation>Сбор журналов...</translation>
    </message>
    <message>
        <source>正在发送反馈...</source>
        <translation>Отправка отзыва...</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>复制</source>
        <translation>Копировать</translation>
    </message>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>Устройства не найдены. Подключите светодиодную ленту.</translation>
    </message>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>Подключите её к компьютеру USB-кабелем для передачи данных. Она появится здесь сама.</translation>
    </message>
    <message>
        <source>已复制</source>
        <translation>Скопировано</translation>
    </message>
    <message>
        <source>允许使用</source>
        <translation>Разрешить доступ</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>Адаптер ленты (%1) занят: %2</translation>
    </message>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>Возможно, это не лента. Если лента, переподключите её и обновите Lumivar.</translation>
    </message>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>Определяется устройство на порту %1</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>Нет прав на открытие порта %1</translation>
    </message>
    <message>
        <source>其他程序</source>
        <translation>Другая программа</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>Подтвердите в диалоге системы.</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>Лента работает, но число светодиодов и их расположение неизвестны. Задайте число или обновите Lumivar.</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>Система пока не ответила. Можно также выполнить эти команды в терминале и войти в систему заново.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>Устройство на порту %1 не распознано (%2)</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>Модель на порту %1 пока неизвестна: %2</translation>
    </message>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>Остановите эту программу и переподключите ленту. Часто это служба Брайля brltty. Удалите её, если она никому не нужна.</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>Переподключите ленту или попробуйте другой кабель и разъём USB. Если это не лента, ничего делать не нужно.</translation>
    </message>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>Закройте эту программу, и лента подключится сама.</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>Порт %1 занят: %2</translation>
    </message>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>Разрешение не получено. Попробуйте ещё раз или выполните эти команды в терминале и войдите в систему заново.</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>Одну минуту.</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>Установите или загрузите драйвер ch341, затем переподключите ленту.</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>Для адаптера ленты (%1) нет драйвера</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>Разрешите пользователям этого компьютера управлять лентой. Система один раз спросит администратора.</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>Доступ разрешён. Если лента не светится, переподключите её. Если не поможет, выполните эти команды в терминале и войдите в систему заново.</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>Выполните эти команды в терминале и войдите в систему заново.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>Устройство на порту %1 не отвечает</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>Выбрать цвет</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>Цветовой круг</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>Стрелки — насыщенность и яркость, Page Up и Page Down — оттенок</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>Цвет концов %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>Цвет %1, положение %2 %</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>Перетащить — переместить, двойной щелчок — изменить цвет, правая кнопка — удалить</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>Дважды щёлкните, чтобы изменить цвет обоих концов</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Удалить</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>Выбрать цвет</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>Щёлкните, чтобы добавить цвет</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>Tab — следующий цвет, стрелки — переместить, Enter — изменить, Insert — добавить, Delete — удалить</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>Один цвет</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>Выбор цвета ленты</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>Переливы</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>Как на экране</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>Музыка</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>Заставьте музыку двигаться!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>Графика</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>Бегущие огни</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>最新版本号：</source>
        <translation>Последняя версия:</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>Отправляются только время запуска и завершения программы и её версия. Больше ничего.</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>Установлена последняя версия</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>Содержит журналы, сведения о версиях и настройки. Личные данные удаляются.</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>Опишите ваши предложения или проблему</translation>
    </message>
    <message>
        <source>当前版本号：</source>
        <translation>Текущая версия:</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>Отправлять данные об использовании</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Справка</translation>
    </message>
    <message>
        <source>保存报告...</source>
        <translation>Сохранить отчёт...</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>Обновить</translation>
    </message>
    <message>
        <source>您的联系方式</source>
        <translation>Ваши контактные данные</translation>
    </message>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>О версии;Обратная связь;Контакты</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>发送反馈</source>
        <translation>Отправить отзыв</translation>
    </message>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>Прилагаются журналы, чтобы мы могли найти причину сбоя.</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>О версии;Обратная связь</translation>
    </message>
</context>
<context>
    <name>HomePage</name>
    <message>
        <source>灯光设备</source>
        <translation>Устройства подсветки</translation>
    </message>
    <message>
        <source>更多产品</source>
        <translation>Другие товары</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>Настройка ленты</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Имя устройства</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>Это сочетание использовать нельзя: оно занято, или на клавиатуре нет такой клавиши.</translation>
    </message>
    <message>
        <source>修改快捷键</source>
        <translation>Изменение сочетания клавиш</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Клавиша</translation>
    </message>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>Нажмите в поле нужную клавишу. Tab — выйти из поля, Esc — отменить.</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Подтвердить</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>快捷键</source>
        <translation>Сочетание клавиш</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>На текущей клавиатуре нет такой клавиши.</translation>
    </message>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>Это сочетание занято другой программой. Оно заработает, как только освободится.</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>Эта рабочая среда не даёт программам занимать клавиши, поэтому сочетания здесь не действуют.</translation>
    </message>
    <message>
        <source>修改快捷键...</source>
        <translation>Изменить сочетание...</translation>
    </message>
    <message>
        <source>功能</source>
        <translation>Действие</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>Рабочая среда ещё не назначила ему клавиши. Это можно сделать в настройках клавиатуры системы.</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (задано рабочей средой)</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>Когда рабочая среда спрашивала, сочетания не были разрешены. Измените любое из них, и она спросит снова.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>提升亮度</source>
        <translation>Увеличить яркость</translation>
    </message>
    <message>
        <source>全开全关切换</source>
        <translation>Включить или выключить всё</translation>
    </message>
    <message>
        <source>切换到下一个模式</source>
        <translation>Перейти к следующему режиму</translation>
    </message>
    <message>
        <source>切换到上一个模式</source>
        <translation>Перейти к предыдущему режиму</translation>
    </message>
    <message>
        <source>降低亮度</source>
        <translation>Уменьшить яркость</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>Все устройства</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>Сейчас настройки не удаётся сохранить. Проверьте свободное место на диске и права на запись в папку настроек: они сохранятся, как только это станет возможно.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>Не удалось открыть установщик:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>Яркость ограничена для защиты блока питания.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>Интенсивность:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>new</source>
        <translation>новая</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>Главная</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>Включить все</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>Выключить все</translation>
    </message>
    <message>
        <source>Alt+N</source>
        <translation>Alt+N</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Справка</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Свернуть</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Выход</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>Доступна новая версия. Загрузить последний установочный пакет?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Да</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>Отменить загрузку</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>Загружается последний установочный пакет</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>Источник звука:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>Выбрать цвет</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>Загрузка не завершена. Проверьте сеть и попробуйте ещё раз.</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>Не удаётся сохранить загруженный файл. Проверьте место на диске.</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>Загружен неверный файл, он удалён.</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Выделить всё</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Увеличить</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>У&amp;меньшить</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>&amp;Основные цвета</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>&amp;Взять цвет с экрана</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>Курсор: %1, %2
ESC — отмена</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>&amp;Свои цвета</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>&amp;Добавить к своим цветам</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>&amp;Тон:</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>&amp;Насыщ.:</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>&amp;Яркость:</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>&amp;Красный:</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>&amp;Зелёный:</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>С&amp;иний:</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>&amp;Альфа-канал:</translation>
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
        <translation>Папка:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Вперёд</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Родительская папка</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Создать папку</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Список</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Таблица</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Тип файлов:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>&amp;Имя файла:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Сохранить</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>Пере&amp;именовать</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Удалить</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>Показать &amp;скрытые файлы</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;Новая папка</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Новая папка</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 уже существует.
Заменить?</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Папка</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>Имя</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Размер</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>Тип</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Дата изменения</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Компьютер</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;ОК</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>О&amp;тмена</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Закрыть</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>Не удалось зарегистрировать %1. Ошибка: %2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>Не удалось освободить %1. Ошибка: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>О&amp;тменить</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Повторить</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Вырезать</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Копировать</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Вст&amp;авить</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Выделить всё</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Да</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Нет</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>Прокрутить сюда</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>К левому краю</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>В начало</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>К правому краю</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>В конец</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>На страницу влево</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>На страницу вверх</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>На страницу вправо</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>На страницу вниз</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Прокрутить влево</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Прокрутить вверх</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Прокрутить вправо</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Прокрутить вниз</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>О&amp;тменить</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Повторить</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Вырезать</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Копировать</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>Копировать адрес &amp;ссылки</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Вст&amp;авить</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Выделить всё</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>Вы нажали кнопку закрытия. Что сделать?</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>Запомнить выбор</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>Выйти из программы</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>Свернуть в трей</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>Скорость:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>添加</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>Удалить этот градиент</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Скорость</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Диапазон</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>Добавить новый градиент</translation>
    </message>
    <message>
        <source>渐变</source>
        <translation>Градиент</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>Нет доступных анимаций</translation>
    </message>
    <message>
        <source>动画</source>
        <translation>Анимация</translation>
    </message>
</context>
<context>
    <name>SSLOptWidget</name>
    <message>
        <source>宽度：</source>
        <translation>Ширина:</translation>
    </message>
    <message>
        <source>把方块拖到LED所在的位置；框选可移动多个，滚轮缩放，右键平移。</source>
        <translation>Перетащите квадраты туда, где стоят светодиоды. Рамка выделяет несколько. Колесо — масштаб, правая кнопка — сдвиг.</translation>
    </message>
    <message>
        <source>高度：</source>
        <translation>Высота:</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Сбросить</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>Расположение светодиодов</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>Page Up и Page Down — выбрать светодиод, стрелки — переместить, Ctrl+A — выбрать все</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>Экран %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>取色范围</source>
        <translation>Область цвета</translation>
    </message>
    <message>
        <source>视频源</source>
        <translation>Источник видео</translation>
    </message>
    <message>
        <source>自动去黑边</source>
        <translation>Убирать чёрные края</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>Насыщенность</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>Чёрные края</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>Сглаживание</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>Защита серого</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Частота кадров</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>Устойчиво</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Классически</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Выкл.</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>Быстрое</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>Спокойное</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>Как распознаются чёрные края. Устойчиво: край убирается, когда остаётся чёрным некоторое время. Субтитры, затемнения и вспышки не мешают. Классически: каждый кадр оценивается отдельно, если края нужно убирать сразу.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>Делает смену цветов мягче. Быстрое: мерцание сглаживается, а за большими изменениями свет следует сразу. Спокойное: всё меняется плавно, если свет слишком беспокойный. Выкл.: каждый кадр показывается как есть.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>Не даёт почти серым участкам стать яркими цветами. Увеличьте, если свет скачет в серых или тёмных сценах, уменьшите, если бледные цвета кажутся серыми. При наименьшем значении защита выключена.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>Сколько раз в секунду считывается экран. Автоматически: так часто, как принимает лента. Уменьшите, чтобы разгрузить процессор.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Автоматически</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>%1 в секунду</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>模式 %1</source>
        <translation>Способ %1</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>Общие</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>Кнопка на устройстве</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>Открыть папку настроек</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>Если отмечено, после закрытия главного окна свет продолжает работать, а программа остаётся в трее.</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>Сохраняет часть данных порта в журнал.</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>Что делает нажатие кнопки на устройстве.</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>Удаляет все настройки при следующем запуске. Сначала будет задан вопрос.</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>Значение гаммы света. Действует на все ленты.</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Да</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>Включить/выключить свет</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>Если отмечено, кнопка любого устройства действует на все, иначе только на своё.</translation>
    </message>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>Включает редактор режима «Весь экран», где можно изменить точку считывания каждого светодиода.</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>Папка с настройками и журналами.</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>Способ захвата экрана</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>Сворачивать в трей вместо выхода</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>Редактор режима «Весь экран»</translation>
    </message>
    <message>
        <source>主界面按钮行为</source>
        <translation>Кнопки главного окна</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>Краткий журнал данных порта</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>Меньшие значения ярче, большие темнее. 1.00 не меняет свет.</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>Управляет всеми устройствами</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>Восстановить настройки по умолчанию</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>Дополнительно для режима «Как на экране»</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>Снимки экрана</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>Общие;Горячие клавиши</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>Настройки сохранены. Перезапустите программу.</translation>
    </message>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>Интерфейс сразу переходит на выбранный язык.</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Язык</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>Чтобы очистить файлы настроек, нужно перезапустить приложение. Работа Lumivar будет завершена.</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>Дополнительно</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>Как считывается экран. Если картинка неверна, попробуйте другой способ.</translation>
    </message>
    <message>
        <source>切换下一个工作模式</source>
        <translation>Следующий режим работы</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>Включить расширенный режим</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>Общие;Горячие клавиши;Дополнительно</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>Показывает больше параметров режима «Как на экране», часть — после перезапуска.</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>Запускается в фоне при входе в систему.</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>Запускать вместе с системой</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>Время от времени сохраняет снимок захваченного экрана.</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>Гасить свет при блокировке экрана</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>Свет гаснет, пока экран заблокирован или выключен, и возвращается вместе с ним.</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>自然</source>
        <translation>Естественное</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>Цвет стены</translation>
    </message>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>%1 светодиодов при полном белом потребляют около %2. Не задавайте больше, чем допускает блок питания.</translation>
    </message>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>Цвет стены;Свет и питание</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>Минимальная яркость</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>Кремовая стена</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>Естественное сохраняет больше оттенков в темноте, как их видит глаз. Прежнее — как в прежних версиях.</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Синий</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>Деревянная стена</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Прежнее</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>Белый ленты</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>Светло-зелёная стена</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Зелёный</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>Показывать на ленте белый</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>Белая или серая стена</translation>
    </message>
    <message>
        <source>浅蓝墙</source>
        <translation>Голубая стена</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>Ограничить общий ток</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>Сбросить</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>Ни один светодиод не станет темнее, оттенки сохраняются. 0 — выключено.</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>Стена</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>Питание</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Красный</translation>
    </message>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>Свет выключен. Включите его, чтобы увидеть результат на стене.</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>Ток одного светодиода при полном белом</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Свой вариант</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>Затемнение</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>При белом на ленте добейтесь, чтобы и стена выглядела белой.</translation>
    </message>
</context>
</TS>
