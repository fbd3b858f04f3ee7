<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>الخرج الافتراضي (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>تقرأ سطح مكتب X11 مباشرةً. في جلسة Wayland لا ترى سوى بعض البرامج.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>يسلّم سطح المكتب صورته، ويطلب موافقتك في المرة الأولى.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>تقرأ سطح المكتب من النظام مباشرةً.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>طريقة التحكم</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>وحدة التحكم الحالية فقط</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>جميع وحدات التحكم</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>اتجاه التركيب</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>من اليسار إلى اليمين</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>من اليمين إلى اليسار</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>وضع التشغيل</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>حالة التشغيل</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>تشغيل الإضاءة</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>إطفاء الإضاءة</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>السطوع</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>خيارات أخرى</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>الوضع الفرعي</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>معاينة الضوء</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>لون الجدار والتعتيم وأدنى سطوع وحدّ التيار</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>لون الجدار...</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>إعداد شريط LED</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>اضبط عدد مصابيح LED حتى تضيء جميعها.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>إجمالي مصابيح LED:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>موافق</translation>
    </message>
</context>
<context>
    <name>DeskDuplManager</name>
    <message>
        <source>%1 (%2 × %3, 主屏幕)</source>
        <translation>‪%1 (%2 × %3)‬ – الشاشة الرئيسية</translation>
    </message>
    <message>
        <source>%1 (%2 × %3)</source>
        <translation>‪%1 (%2 × %3)‬</translation>
    </message>
</context>
<context>
    <name>DeviceControlWidget</name>
    <message>
        <source>工作状态</source>
        <translation>حالة التشغيل</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>وضع التشغيل</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>السطوع</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>الوضع الفرعي</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>إطفاء الإضاءة</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>تشغيل الإضاءة</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>مرحبًا يا صديقي، يبدو أن شريط LED لديك يواجه مشكلة صغيرة. إنه ينفصل مرارًا، وربما لا تصله طاقة كافية. جرّب توصيله بمنفذ USB في اللوحة الأم، أو بموزّع USB له مصدر طاقة مستقل. إذا استمرت المشكلة فتواصل مع خدمة ما بعد البيع. نعتذر حقًا عن الإزعاج، ونرجو أن تُحل المشكلة قريبًا، بالتوفيق! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>يسلّمها سطح المكتب، ويسألك عند أول استخدام</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>البرنامج لا يعمل</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>الصوت</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>الشاشة</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>البرنامج يعمل (%1)</translation>
    </message>
    <message>
        <source>可以直接读取</source>
        <translation>يمكن قراءتها مباشرة</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>بوابة سطح المكتب (xdg-desktop-portal) لا تستجيب. سجّل الدخول من جديد ثم أعد المحاولة.</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>الأذونات</translation>
    </message>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>لا توجد شاشة. شغّله داخل جلسة سطح مكتب.</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>لا توجد في سطح المكتب بوابة تسلّم الشاشة. ثبّت xdg-desktop-portal والجزء المناسب لسطح المكتب هذا.</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>الأجهزة</translation>
    </message>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 جاهز</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>لا توجد قاعدة udev، فالأمر لمجموعات المستخدم</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>يسلّمها سطح المكتب بموافقتك</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: يتحكم به Lumivar العامل حاليًا (%2)</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>الأضواء المتحركة</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>لون واحد</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>تدفق الألوان</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>ظلال المزاج</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>ألوان متعددة 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>ألوان متعددة 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>ألوان متعددة 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>ألوان متعددة 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>ألوان متعددة 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>ألوان متعددة 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>كامل الشاشة</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>النصف العلوي</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>النصف السفلي</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>النصف الأيسر</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>النصف الأيمن</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>السينما</translation>
    </message>
    <message>
        <source>音乐1</source>
        <translation>موسيقى 1</translation>
    </message>
    <message>
        <source>音乐2</source>
        <translation>موسيقى 2</translation>
    </message>
    <message>
        <source>音乐3</source>
        <translation>موسيقى 3</translation>
    </message>
    <message>
        <source>音乐4</source>
        <translation>موسيقى 4</translation>
    </message>
    <message>
        <source>音乐5</source>
        <translation>موسيقى 5</translation>
    </message>
    <message>
        <source>音乐6</source>
        <translation>موسيقى 6</translation>
    </message>
    <message>
        <source>音乐7</source>
        <translation>موسيقى 7</translation>
    </message>
    <message>
        <source>音乐8</source>
        <translation>موسيقى 8</translation>
    </message>
    <message>
        <source>图像模式</source>
        <translation>الصور</translation>
    </message>
    <message>
        <source>音乐模式1</source>
        <translation>وضع الموسيقى 1</translation>
    </message>
    <message>
        <source>音乐模式2</source>
        <translation>وضع الموسيقى 2</translation>
    </message>
    <message>
        <source>音乐模式3</source>
        <translation>وضع الموسيقى 3</translation>
    </message>
    <message>
        <source>音乐模式4</source>
        <translation>وضع الموسيقى 4</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>أنفاس الموسيقى</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>طيف متناظر</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>أعمدة المستوى</translation>
    </message>
    <message>
        <source>声色渐变</source>
        <translation>لون حسب الشدة</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>لا يوجد مصدر صوت متاح، لذا يبقى شريط LED مطفأً. وصّل مكبّر صوت أو اختر مصدر صوت آخر.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>لا توجد صورة شاشة يمكن تتبعها.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>الشاشة المختارة غير متصلة.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>حجم الشاشة أو التخطيط لا يناسب هذا التأثير.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>التأثير الحالي غير متاح، يُرجى اختيار تأثير آخر.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>وضع التشغيل الحالي غير متاح، يُرجى اختيار وضع آخر.</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>لم تتم مشاركة الشاشة، لذا لا يمكن للشريط تتبعها.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>انتهت مشاركة الشاشة، لذا لم يعد الشريط يتتبعها.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>يتطلب تتبع الشاشة موافقتك، وسيسألك سطح المكتب عنها.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>طلب الشاشة</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>لا توجد شاشة يمكن قراءتها. شغّل البرنامج في سطح مكتب رسومي أو غيّر طريقة التقاط الشاشة في الإعدادات.</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>لا يوفر سطح المكتب هذا صورة للشاشة. ثبّت xdg-desktop-portal مع الواجهة الخلفية المناسبة لسطح مكتبك، أو غيّر طريقة التقاط الشاشة في الإعدادات.</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>انقطعت صورة الشاشة، وسيستمر الشريط من تلقاء نفسه عند عودتها.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>يرجى اختيار الشاشات المراد تتبعها في مربع حوار سطح المكتب.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>تعذر الوصول إلى خادم الصوت، لذا يبقى الشريط مطفأً. تأكد من أن خدمة الصوت في النظام، مثل PipeWire، تعمل.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>لم يُسمع أي صوت منذ مدة. شغّل موسيقى أو اختر المصدر الذي يعمل.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>تم حفظ التقرير:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>تعذّر إرسال الملاحظات:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>تعذّر حفظ التقرير:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>تم إرسال الملاحظات</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>取消</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>正在发送反馈...</source>
        <translation>جارٍ إرسال الملاحظات...</translation>
    </message>
    <message>
        <source>正在收集日志...</source>
        <translation>جارٍ جمع السجلات...</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>صِله بالحاسوب بكابل بيانات USB، وسيظهر هنا من تلقاء نفسه.</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>نسخ</translation>
    </message>
    <message>
        <source>已复制</source>
        <translation>تم النسخ</translation>
    </message>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>لم يُعثر على أي جهاز. يُرجى توصيل شريط LED.</translation>
    </message>
    <message>
        <source>允许使用</source>
        <translation>السماح بالوصول</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>يجري التعرف على الجهاز في المنفذ %1</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>الشريط يعمل، لكن عدد مصابيحه وترتيبها غير معروفين. حدّد العدد أو حدّث Lumivar.</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>اسمح لمستخدمي هذا الحاسوب باستخدام الشريط. سيسأل النظام المسؤول مرة واحدة.</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>مُنح الإذن. إن بقي الشريط مطفأً فافصله وأعد توصيله، وإن لم يُجدِ ذلك فنفّذ هذين الأمرين في الطرفية ثم سجّل الدخول من جديد.</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>نفّذ هذين الأمرين في الطرفية ثم سجّل الدخول من جديد.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>تعذر التعرف على الجهاز في المنفذ %1 (%2)</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>لا إذن لفتح المنفذ %1</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>لحظة من فضلك.</translation>
    </message>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>أغلق ذلك البرنامج، وسيتصل الشريط من تلقاء نفسه.</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>الطراز في المنفذ %1 غير معروف بعد: %2</translation>
    </message>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>أوقف ذلك البرنامج ثم افصل الشريط وأعد توصيله. غالبًا ما تكون خدمة برايل brltty، وأزلها إن لم يحتجها أحد.</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>افصل الشريط وأعد توصيله، أو جرّب كابلًا ومنفذ USB آخرين. وإن لم يكن شريطًا فلا حاجة إلى شيء.</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>المنفذ %1 قيد الاستخدام: %2</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>يُرجى التأكيد في نافذة النظام.</translation>
    </message>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>محوّل الشريط (%1) مشغول: %2</translation>
    </message>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>لم يُمنح الإذن. حاول مرة أخرى، أو نفّذ هذين الأمرين في الطرفية ثم سجّل الدخول من جديد.</translation>
    </message>
    <message>
        <source>其他程序</source>
        <translation>برنامج آخر</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>الجهاز في المنفذ %1 لا يستجيب</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>لا يوجد برنامج تشغيل لمحوّل الشريط (%1)</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>ثبّت برنامج التشغيل ch341 أو حمّله، ثم افصل الشريط وأعد توصيله.</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>لم يُجب النظام بعد. يمكنك أيضًا تنفيذ هذين الأمرين في الطرفية ثم تسجيل الدخول من جديد.</translation>
    </message>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>قد لا يكون شريطًا. وإن كان كذلك فافصله وأعد توصيله وحدّث Lumivar.</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>اختيار اللون</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>عجلة الألوان</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>الأسهم لتغيير التشبّع والسطوع، وPage Up وPage Down لتغيير درجة اللون</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>لون الطرفين %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>اللون %1، الموضع %2%</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>اسحب للتحريك، وانقر مرتين لتغيير اللون، وانقر بالزر الأيمن للحذف</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>انقر مرتين لتغيير لون الطرفين</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>تغيير</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>حذف</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>اختيار اللون</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>انقر لإضافة لون</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>‏Tab للتنقل بين الألوان، والأسهم للتحريك، وEnter للتغيير، وInsert للإضافة، وDelete للحذف</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>لون واحد</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>ضبط لون الشريط</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>ألوان متعددة</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>مزامنة الشاشة</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>الموسيقى</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>اجعل الموسيقى تتحرك!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>الرسومات</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>الأضواء المتحركة</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>您的联系方式</source>
        <translation>معلومات الاتصال بك</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>当前版本号：</source>
        <translation>الإصدار الحالي:</translation>
    </message>
    <message>
        <source>发送反馈</source>
        <translation>إرسال الملاحظات</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>إرسال معلومات الاستخدام</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>المساعدة</translation>
    </message>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>تُرفق السجلات لنتمكن من معرفة سبب الخلل.</translation>
    </message>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>معلومات الإصدار;الملاحظات;اتصل بنا</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>تحديث</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>اكتب اقتراحاتك أو المشكلات التي واجهتها</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>يُرسل فقط وقت بدء البرنامج وإنهائه ورقم إصداره، ولا شيء سوى ذلك.</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>يتضمن السجلات وأرقام الإصدارات والإعدادات. تُحذف منها البيانات الشخصية.</translation>
    </message>
    <message>
        <source>最新版本号：</source>
        <translation>أحدث إصدار:</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>لديك أحدث إصدار</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>معلومات الإصدار;الملاحظات</translation>
    </message>
    <message>
        <source>保存报告...</source>
        <translation>حفظ التقرير...</translation>
    </message>
</context>
<context>
    <name>HomePage</name>
    <message>
        <source>灯光设备</source>
        <translation>أجهزة الإضاءة</translation>
    </message>
    <message>
        <source>更多产品</source>
        <translation>المزيد من المنتجات</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>إعداد شريط LED</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>اسم الجهاز</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>اضغط المفتاح المطلوب في الحقل. Tab للمغادرة، Esc للإلغاء.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>تأكيد</translation>
    </message>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>لا يمكن استخدام هذه التركيبة: فهي محجوزة، أو أن لوحة المفاتيح لا تحتوي على هذا المفتاح.</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>المفتاح</translation>
    </message>
    <message>
        <source>修改快捷键</source>
        <translation>تغيير الاختصار</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>功能</source>
        <translation>الإجراء</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>لوحة المفاتيح الحالية لا تحتوي على هذا المفتاح.</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>لا يسمح سطح المكتب هذا للبرامج بحجز المفاتيح، لذا لا تعمل الاختصارات هنا.</translation>
    </message>
    <message>
        <source>修改快捷键...</source>
        <translation>تغيير الاختصار...</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>الاختصار</translation>
    </message>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>يحجز برنامج آخر هذا الاختصار، وسيعمل تلقائيًا حالما يتحرر.</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>لم يعيّن سطح المكتب مفاتيح له بعد. يمكن تعيينها في إعدادات لوحة المفاتيح في النظام.</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (حدّده سطح المكتب)</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>لم يُسمح بالاختصارات عندما سأل سطح المكتب. عدّل أحدها وسيسأل من جديد.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>全开全关切换</source>
        <translation>تشغيل الكل أو إيقافه</translation>
    </message>
    <message>
        <source>切换到下一个模式</source>
        <translation>الانتقال إلى الوضع التالي</translation>
    </message>
    <message>
        <source>提升亮度</source>
        <translation>رفع السطوع</translation>
    </message>
    <message>
        <source>降低亮度</source>
        <translation>خفض السطوع</translation>
    </message>
    <message>
        <source>切换到上一个模式</source>
        <translation>الانتقال إلى الوضع السابق</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>جميع الأجهزة</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>لا يمكن حفظ الإعدادات في الوقت الحالي. تحقّق من المساحة الخالية على القرص ومن إذن الكتابة في مجلد الإعدادات. وسيتم حفظها حالما يصبح ذلك ممكنًا.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>تعذّر فتح برنامج التثبيت:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>السطوع محدود لحماية مصدر الطاقة.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>الشدة:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>new</source>
        <translation>جديد</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>الرئيسية</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>تشغيل الكل</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>إطفاء الكل</translation>
    </message>
    <message>
        <source>Alt+N</source>
        <translation>Alt+N</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>المساعدة</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>تصغير</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>خروج</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>يتوفر إصدار جديد. هل تريد تنزيل أحدث حزمة تثبيت؟</translation>
    </message>
    <message>
        <source>是</source>
        <translation>نعم</translation>
    </message>
    <message>
        <source>否</source>
        <translation>لا</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>جارٍ تنزيل أحدث حزمة تثبيت</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>إلغاء التنزيل</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>مصدر الصوت:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>اختيار اللون</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>لم يكتمل التنزيل. يُرجى التحقق من الشبكة ثم المحاولة مرة أخرى.</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>يتعذّر حفظ الملف الذي تم تنزيله. يُرجى التحقق من مساحة القرص.</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>الملف الذي تم تنزيله غير صحيح وتم حذفه.</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>ت&amp;حديد الكل</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;زيادة</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>إ&amp;نقاص</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>الألوان الأ&amp;ساسية</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>التقاط لون من ال&amp;شاشة</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>المؤشر عند %1, %2
اضغط ESC للإلغاء</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>الألوان الم&amp;خصصة</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>إ&amp;ضافة إلى الألوان المخصصة</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>ال&amp;صبغة:</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>ال&amp;تشبع:</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>ال&amp;قيمة:</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>أ&amp;حمر:</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>أخض&amp;ر:</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>أ&amp;زرق:</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>قناة أ&amp;لفا:</translation>
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
        <translation>البحث في:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>رجوع</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>تقدم</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>المجلد الأعلى</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>إنشاء مجلد جديد</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>عرض القائمة</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>عرض التفاصيل</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>نوع الملفات:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>ا&amp;سم الملف:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;حفظ</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>إ&amp;عادة التسمية</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>ح&amp;ذف</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>إظهار الملفات ال&amp;مخفية</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>مجلد &amp;جديد</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>مجلد جديد</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 موجود بالفعل.
هل تريد استبداله؟</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>مجلد</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>الاسم</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>الحجم</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>النوع</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>تاريخ التعديل</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>الكمبيوتر</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;موافق</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>إ&amp;لغاء</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>إ&amp;غلاق</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>تعذّر تسجيل %1. الخطأ: %2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>تعذّر إلغاء تسجيل %1. الخطأ: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>ت&amp;راجع</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;إعادة</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;قص</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;نسخ</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;لصق</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>حذف</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>تحديد الكل</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;نعم</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;لا</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>التمرير إلى هنا</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>الحافة اليسرى</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>الأعلى</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>الحافة اليمنى</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>الأسفل</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>صفحة إلى اليسار</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>صفحة إلى الأعلى</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>صفحة إلى اليمين</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>صفحة إلى الأسفل</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>تمرير إلى اليسار</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>تمرير إلى الأعلى</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>تمرير إلى اليمين</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>تمرير إلى الأسفل</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>ت&amp;راجع</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;إعادة</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;قص</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;نسخ</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>نسخ &amp;عنوان الرابط</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;لصق</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>حذف</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>تحديد الكل</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>لقد ضغطت زر الإغلاق، ماذا تريد أن تفعل؟</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>تذكّر اختياري</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>إنهاء البرنامج</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>تصغير إلى علبة النظام</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>السرعة:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>范围</source>
        <translation>المدى</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>إضافة تدرج لوني جديد</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>السرعة</translation>
    </message>
    <message>
        <source>渐变</source>
        <translation>تدرج لوني</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>حذف هذا التدرج اللوني</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>حذف</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>إضافة</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>لا توجد رسوم متحركة للاختيار</translation>
    </message>
    <message>
        <source>动画</source>
        <translation>الرسوم المتحركة</translation>
    </message>
</context>
<context>
    <name>SSLOptWidget</name>
    <message>
        <source>高度：</source>
        <translation>الارتفاع:</translation>
    </message>
    <message>
        <source>宽度：</source>
        <translation>العرض:</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>إعادة ضبط</translation>
    </message>
    <message>
        <source>把方块拖到LED所在的位置；框选可移动多个，滚轮缩放，右键平移。</source>
        <translation>اسحب كل مربع إلى موضع مصباح LED الخاص به. ارسم إطارًا لتحديد عدة مربعات. العجلة: تكبير وتصغير، الزر الأيمن: تحريك العرض.</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>توزيع مصابيح LED</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>‏Page Up وPage Down لاختيار LED، والأسهم لتحريكه، وCtrl+A لتحديد الكل</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>الشاشة %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>取色范围</source>
        <translation>نطاق الألوان</translation>
    </message>
    <message>
        <source>自动去黑边</source>
        <translation>إزالة الحواف السوداء تلقائيًا</translation>
    </message>
    <message>
        <source>视频源</source>
        <translation>مصدر الفيديو</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>التشبّع</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>الحواف السوداء</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>التنعيم</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>حماية الرمادي</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>معدل الإطارات</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>ثابت</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>كلاسيكي</translation>
    </message>
    <message>
        <source>关</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>سريع الاستجابة</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>هادئ</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>طريقة التعرّف على الحواف السوداء. ثابت: تُزال الحافة بعد أن تبقى سوداء، فلا تخدعها الترجمة ولا التلاشي ولا الوميض. كلاسيكي: يُقيَّم كل إطار وحده، لمن يريد إزالة الحواف فورًا.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>يجعل تغيّر الألوان أنعم. سريع الاستجابة: يخفّف الوميض ويتبع التغيّرات الكبيرة فورًا. هادئ: كل تغيّر يحدث ببطء، إذا كان الضوء كثير التقلّب. إيقاف: يُعرض كل إطار كما هو.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>تمنع الأجزاء القريبة من الرمادي من التحوّل إلى ألوان زاهية. ارفعها إذا قفز الضوء في المشاهد الرمادية أو المظلمة، واخفضها إذا بدت الألوان الباهتة رمادية؛ وعند أدنى قيمة تكون متوقفة.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>عدد مرات قراءة الشاشة في الثانية. تلقائي: بقدر ما يستقبله الشريط. اخفض القيمة لتخفيف العبء عن المعالج.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>تلقائي</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>%1 في الثانية</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>تستخدم الواجهة اللغة المختارة فورًا.</translation>
    </message>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>يفعّل محرر وضع الشاشة الكاملة الذي يتيح تعديل موضع أخذ اللون لكل LED.</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>محرر وضع الشاشة الكاملة</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>يتطلب مسح ملفات الإعدادات إعادة تشغيل التطبيق، وسيتم إنهاء Lumivar.</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>القيم الأصغر أكثر سطوعًا والأكبر أقل سطوعًا، و1.00 تترك الضوء كما هو.</translation>
    </message>
    <message>
        <source>否</source>
        <translation>لا</translation>
    </message>
    <message>
        <source>切换下一个工作模式</source>
        <translation>وضع التشغيل التالي</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>اللغة</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>سجل موجز لبيانات المنفذ</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>يتحكم في كل الأجهزة</translation>
    </message>
    <message>
        <source>模式 %1</source>
        <translation>الطريقة %1</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>عند التحديد تستمر الأضواء بعد إغلاق النافذة الرئيسية ويبقى البرنامج في علبة النظام.</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>是</source>
        <translation>نعم</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>فتح مجلد الإعدادات</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>طريقة قراءة الشاشة. جرّب طريقة أخرى إذا لم تكن الصورة صحيحة.</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>زر الجهاز</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>تفعيل الوضع المتقدم</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>يحفظ من حين إلى آخر صورة من الشاشة الملتقطة.</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>يبدأ في الخلفية عند تسجيل الدخول.</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>يعرض خيارات أكثر لمزامنة الشاشة، بعضها بعد إعادة التشغيل.</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>قيمة غاما للضوء، وتؤثر في كل شرائط LED.</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>خيارات متقدمة لمزامنة الشاشة</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>البدء تلقائيًا مع النظام</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>يحذف كل الإعدادات عند التشغيل التالي، بعد أن يسألك أولًا.</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>عام;الاختصارات;متقدم</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>التصغير إلى علبة النظام بدل إنهاء البرنامج</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>استعادة الإعدادات الافتراضية</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>تم حفظ الإعدادات. يُرجى إعادة تشغيل البرنامج.</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>المجلد الذي يحوي الإعدادات والسجلات.</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>عام;الاختصارات</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>ما يفعله الضغط على زر الجهاز.</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>عند التحديد يتحكم زر أي جهاز في كل الأجهزة، وإلا ففي جهازه فقط.</translation>
    </message>
    <message>
        <source>主界面按钮行为</source>
        <translation>أزرار النافذة الرئيسية</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>يحفظ جزءًا من بيانات المنفذ في السجل.</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>طريقة التقاط الشاشة</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>متقدم</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>تشغيل الضوء وإطفاؤه</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>لقطات الشاشة</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>تنطفئ الأضواء ما دامت الشاشة مقفلة أو مطفأة، وتعود معها.</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>إطفاء الأضواء عند قفل الشاشة</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>الإضاءة مطفأة. شغّلها لترى النتيجة على الجدار.</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>جدار أخضر فاتح</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>أبيض الشريط</translation>
    </message>
    <message>
        <source>浅蓝墙</source>
        <translation>جدار أزرق فاتح</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>أزرق</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>مخصّص</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>لون الجدار</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>إظهار الأبيض على الشريط</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>جدار خشبي</translation>
    </message>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>لون الجدار;الضوء والطاقة</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>لا يصبح أي مصباح أعتم من ذلك، ويبقى اللون كما هو. 0 يعني الإيقاف.</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>الجدار</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>أخضر</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>مع إظهار الأبيض على الشريط، اضبط حتى يبدو الجدار أبيض أيضًا.</translation>
    </message>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>تحتاج %1 من المصابيح إلى نحو %2 عند الأبيض الكامل. لا تتجاوز ما يتحمّله مصدر الطاقة.</translation>
    </message>
    <message>
        <source>自然</source>
        <translation>طبيعي</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>جدار كريمي</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>مصدر الطاقة</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>أدنى سطوع</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>التعتيم</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>جدار أبيض أو رمادي</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>تحديد التيار الكلي</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>تيار المصباح الواحد عند الأبيض الكامل</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>طبيعي: يحافظ على درجات أكثر في الألوان الداكنة كما تراها العين. تقليدي: كما في الإصدارات السابقة.</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>تقليدي</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>استعادة الافتراضي</translation>
    </message>
    <message>
        <source>红</source>
        <translation>أحمر</translation>
    </message>
</context>
</TS>
