<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>Salida predeterminada (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>Lee el escritorio X11 directamente. En una sesión de Wayland solo ve algunos programas.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>El escritorio entrega su imagen y la primera vez pide su consentimiento.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>Lee el escritorio directamente del sistema.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>Modo de control</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>Solo el controlador actual</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>Todos los controladores</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>Sentido de instalación</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>De izquierda a derecha</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>De derecha a izquierda</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Modo de funcionamiento</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Encender</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Apagar</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brillo</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Otras opciones</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Submodo</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>Vista previa de la luz</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>Color de pared...</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>Color de pared, atenuación, brillo mínimo y límite de corriente</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>Configurar la tira</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>Ajuste el número de LED hasta que se enciendan todos.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>Total de LED:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>DeskDuplManager</name>
    <message>
        <source>%1 (%2 × %3, 主屏幕)</source>
        <translation>%1 (%2 × %3, principal)</translation>
    </message>
    <message>
        <source>%1 (%2 × %3)</source>
        <translation>%1 (%2 × %3)</translation>
    </message>
</context>
<context>
    <name>DeviceControlWidget</name>
    <message>
        <source>关灯</source>
        <translation>Apagar</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Encender</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Modo de funcionamiento</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brillo</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Submodo</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>¡Hola! Parece que tu tira de LED tiene un pequeño problema: se desconecta una y otra vez, quizá porque le falta energía. Prueba a enchufarla en un puerto USB de la placa base o en un concentrador USB con alimentación propia. Si sigue igual, ponte en contacto con el servicio posventa. Sentimos mucho las molestias. ¡Esperamos que se arregle pronto, ánimo! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>屏幕</source>
        <translation>Pantalla</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>El programa está en marcha (%1)</translation>
    </message>
    <message>
        <source>可以直接读取</source>
        <translation>Se puede leer directamente</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>No hay regla de udev, así que deciden los grupos del usuario</translation>
    </message>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 está listo</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Permisos</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>Sonido</translation>
    </message>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>No hay pantalla. Ejecútelo en una sesión de escritorio.</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>El portal del escritorio (xdg-desktop-portal) no responde. Vuelva a iniciar sesión e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: controlado por el Lumivar en marcha (%2)</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>El programa no está en marcha</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Dispositivos</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>El escritorio no tiene un portal que entregue la pantalla. Instale xdg-desktop-portal y su parte para este escritorio.</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>La entrega el escritorio, con su consentimiento</translation>
    </message>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>La entrega el escritorio, que se lo preguntará la primera vez</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>Marquesina</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>Un solo color</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>Flujo de colores</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>Luz emocional</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>Multicolor 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>Multicolor 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>Multicolor 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>Multicolor 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>Multicolor 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>Multicolor 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>Toda la pantalla</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>Mitad superior</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>Mitad inferior</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>Mitad izquierda</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>Mitad derecha</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>Cine</translation>
    </message>
    <message>
        <source>音乐1</source>
        <translation>Música 1</translation>
    </message>
    <message>
        <source>音乐2</source>
        <translation>Música 2</translation>
    </message>
    <message>
        <source>音乐3</source>
        <translation>Música 3</translation>
    </message>
    <message>
        <source>音乐4</source>
        <translation>Música 4</translation>
    </message>
    <message>
        <source>音乐5</source>
        <translation>Música 5</translation>
    </message>
    <message>
        <source>音乐6</source>
        <translation>Música 6</translation>
    </message>
    <message>
        <source>音乐7</source>
        <translation>Música 7</translation>
    </message>
    <message>
        <source>音乐8</source>
        <translation>Música 8</translation>
    </message>
    <message>
        <source>图像模式</source>
        <translation>Imágenes</translation>
    </message>
    <message>
        <source>音乐模式1</source>
        <translation>Modo música 1</translation>
    </message>
    <message>
        <source>音乐模式2</source>
        <translation>Modo música 2</translation>
    </message>
    <message>
        <source>音乐模式3</source>
        <translation>Modo música 3</translation>
    </message>
    <message>
        <source>音乐模式4</source>
        <translation>Modo música 4</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>Respiración</translation>
    </message>
    <message>
        <source>声色渐变</source>
        <translation>Color sonoro</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>Espejo sonoro</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>Niveles</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>No hay ninguna fuente de sonido, por eso la tira permanece apagada. Conecte un altavoz o elija otra fuente de sonido.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>No hay ninguna imagen de pantalla que seguir.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>El tamaño de la pantalla o de la disposición no es adecuado para este efecto.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>La pantalla elegida no está conectada.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>El efecto actual no está disponible. Elija otro.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>El modo de trabajo actual no está disponible. Elija otro.</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>No se compartió la pantalla, así que la tira no puede seguirla.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>Elija en el cuadro de diálogo del escritorio las pantallas que se deben seguir.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>Se dejó de compartir la pantalla, así que la tira ya no la sigue.</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>Este escritorio no ofrece ninguna imagen de pantalla. Instale xdg-desktop-portal con el backend de su escritorio o cambie el modo de captura de pantalla en los ajustes.</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>La imagen de la pantalla se interrumpió. Cuando vuelva, la tira seguirá por sí sola.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>Para seguir la pantalla hace falta su consentimiento. El escritorio se lo pedirá.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>Pedir la pantalla</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>No hay ninguna pantalla que leer. Inicie el programa en un escritorio gráfico o cambie el modo de captura de pantalla en los ajustes.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>No se puede contactar con el servidor de sonido, por eso la tira sigue apagada. Compruebe que el servicio de sonido, como PipeWire, esté en marcha.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>Hace un rato que no se oye nada. Ponga música o elija la fuente que esté sonando.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>El informe se ha guardado:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>No se han podido enviar los comentarios:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>No se ha podido guardar el informe:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>Los comentarios se han enviado</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>正在收集日志...</source>
        <translation>Reuniendo los registros...</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>正在发送反馈...</source>
        <translation>Enviando los comentarios...</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>No se ha encontrado ningún dispositivo. Conecte una tira de LED.</translation>
    </message>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>Conéctela al ordenador con un cable de datos USB. Aparecerá aquí por sí sola.</translation>
    </message>
    <message>
        <source>允许使用</source>
        <translation>Permitir el acceso</translation>
    </message>
    <message>
        <source>已复制</source>
        <translation>Copiado</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copiar</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>其他程序</source>
        <translation>Otro programa</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>Desconecte la tira y vuelva a conectarla, o pruebe con otro cable u otra toma USB. Si no es una tira, no hay nada que hacer.</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>El modelo del puerto %1 aún no se conoce: %2</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>No se reconoce el dispositivo del puerto %1 (%2)</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>El adaptador de la tira (%1) no tiene controlador</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>Un momento.</translation>
    </message>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>Cierre ese programa. La tira se conectará entonces por sí sola.</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>El puerto %1 está en uso: %2</translation>
    </message>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>No se ha autorizado. Inténtelo de nuevo o ejecute estas órdenes en un terminal y vuelva a iniciar sesión.</translation>
    </message>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>Identificando el dispositivo del puerto %1</translation>
    </message>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>Puede que no sea una tira. Si lo es, desconéctela, vuelva a conectarla y actualice Lumivar.</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>El sistema aún no ha respondido. También puede ejecutar estas órdenes en un terminal y volver a iniciar sesión.</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>El acceso está permitido. Si la tira sigue apagada, desconéctela y vuelva a conectarla. Si no basta, ejecute estas órdenes en un terminal y vuelva a iniciar sesión.</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>La tira funciona, pero se desconocen el número de LED y su disposición. Ajuste el número o actualice Lumivar.</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>Instale o cargue su controlador ch341, luego desconecte la tira y vuelva a conectarla.</translation>
    </message>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>Detenga ese programa, desconecte la tira y vuelva a conectarla. Suele ser el servicio braille brltty. Quítelo si nadie lo necesita.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>El dispositivo del puerto %1 no responde</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>Ejecute estas órdenes en un terminal y vuelva a iniciar sesión.</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>Confírmelo en el cuadro de diálogo del sistema.</translation>
    </message>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>El adaptador de la tira (%1) está ocupado: %2</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>Sin permiso para abrir el puerto %1</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>Permita que los usuarios de este ordenador usen la tira. El sistema pedirá una vez la confirmación de un administrador.</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>Elegir color</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>Círculo cromático</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>Las flechas cambian la saturación y el brillo, Re Pág y Av Pág el tono</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>Color de los extremos %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>Color %1, posición %2 %</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>Arrastre para mover, doble clic para cambiar el color, clic derecho para eliminar</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>Doble clic para cambiar el color de ambos extremos</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>Cambiar</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Eliminar</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>Elegir color</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>Haga clic para añadir un color</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>Tab pasa al color siguiente, las flechas lo mueven, Intro cambia, Insertar añade, Suprimir elimina</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>Un solo color</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>Elegir el color de la tira</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>Multicolor</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>Como la pantalla</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>¡Dale movimiento a la música!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>Gráficos</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>Marquesina</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>发送反馈</source>
        <translation>Enviar comentarios</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>Incluye los registros, las versiones y los ajustes. Los datos personales se eliminan.</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>Enviar datos de uso</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>Escriba sus sugerencias o los problemas que ha encontrado</translation>
    </message>
    <message>
        <source>保存报告...</source>
        <translation>Guardar informe...</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>Solo se envía cuándo se inicia y se cierra el programa, y su versión. Nada más.</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>Versión;Comentarios</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>Ya tiene la última versión</translation>
    </message>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>Se adjuntan los registros para que podamos encontrar la causa del fallo.</translation>
    </message>
    <message>
        <source>您的联系方式</source>
        <translation>Sus datos de contacto</translation>
    </message>
    <message>
        <source>当前版本号：</source>
        <translation>Versión actual:</translation>
    </message>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>Versión;Comentarios;Contacto</translation>
    </message>
    <message>
        <source>最新版本号：</source>
        <translation>Última versión:</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>Actualizar</translation>
    </message>
</context>
<context>
    <name>HomePage</name>
    <message>
        <source>灯光设备</source>
        <translation>Dispositivos de luz</translation>
    </message>
    <message>
        <source>更多产品</source>
        <translation>Más productos</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>Configurar la tira</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Nombre del dispositivo</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>修改快捷键</source>
        <translation>Cambiar atajo</translation>
    </message>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>Pulse en el campo la tecla que desee. Tab sale del campo, Esc cancela.</translation>
    </message>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>Esta combinación no se puede usar: está ocupada o el teclado no tiene esa tecla.</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Tecla</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Confirmar</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>功能</source>
        <translation>Acción</translation>
    </message>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>Otro programa ocupa este atajo. Funcionará en cuanto lo libere.</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>Este escritorio no deja que los programas ocupen teclas, por eso los atajos no funcionan aquí.</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Atajo</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>El teclado actual no tiene esa tecla.</translation>
    </message>
    <message>
        <source>修改快捷键...</source>
        <translation>Cambiar atajo...</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (definido por el escritorio)</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>El escritorio aún no le ha asignado teclas. Hágalo en los ajustes de teclado del sistema.</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>Los atajos no se permitieron cuando el escritorio preguntó. Edite uno y volverá a preguntar.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>降低亮度</source>
        <translation>Reducir el brillo</translation>
    </message>
    <message>
        <source>切换到上一个模式</source>
        <translation>Cambiar al modo anterior</translation>
    </message>
    <message>
        <source>切换到下一个模式</source>
        <translation>Cambiar al modo siguiente</translation>
    </message>
    <message>
        <source>全开全关切换</source>
        <translation>Encender o apagar todo</translation>
    </message>
    <message>
        <source>提升亮度</source>
        <translation>Aumentar el brillo</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>Todos los dispositivos</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>Los ajustes no se pueden guardar por el momento. Compruebe el espacio libre en disco y el permiso de escritura de la carpeta de ajustes. Se guardarán en cuanto sea posible.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>No se ha podido abrir el instalador:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>El brillo está limitado para proteger la fuente de alimentación.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>Intensidad:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>new</source>
        <translation>nuevo</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>Encender todo</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>Apagar todo</translation>
    </message>
    <message>
        <source>Alt+N</source>
        <translation>Alt+N</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>Hay una versión nueva. ¿Desea descargar el paquete de instalación más reciente?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Sí</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>Cancelar la descarga</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>Descargando el paquete de instalación más reciente</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>Fuente de sonido:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>Elegir color</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>La descarga no se ha completado. Comprueba la red e inténtalo de nuevo.</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>No se puede guardar el archivo descargado. Comprueba el espacio en disco.</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>El archivo descargado no es el correcto y se ha eliminado.</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Seleccionar todo</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Aumentar</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>&amp;Reducir</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>Colores &amp;básicos</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>&amp;Tomar color de la pantalla</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>Cursor en %1, %2
Pulse ESC para cancelar</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>Colores p&amp;ersonalizados</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>&amp;Añadir a los personalizados</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>&amp;Matiz:</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>&amp;Sat.:</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>&amp;Valor:</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>&amp;Rojo:</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>Ver&amp;de:</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>A&amp;zul:</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>Canal a&amp;lfa:</translation>
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
        <translation>Buscar en:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Adelante</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Carpeta superior</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Crear carpeta nueva</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Vista de lista</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Vista detallada</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Tipo de archivo:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>&amp;Nombre de archivo:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Guardar</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Renombrar</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Eliminar</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>Mostrar archivos &amp;ocultos</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>Carpeta &amp;nueva</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Carpeta nueva</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 ya existe.
¿Desea reemplazarlo?</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Carpeta</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Fecha de modificación</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Equipo</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;Aceptar</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancelar</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>C&amp;errar</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>No se pudo registrar %1. Error: %2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>No se pudo liberar %1. Error: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Deshacer</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rehacer</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cor&amp;tar</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Pegar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Sí</translation>
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
        <translation>Desplazar hasta aquí</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Borde izquierdo</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Borde derecho</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Final</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>Página a la izquierda</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Página arriba</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>Página a la derecha</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Página abajo</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Desplazar a la izquierda</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Desplazar hacia arriba</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Desplazar a la derecha</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Desplazar hacia abajo</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Deshacer</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rehacer</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cor&amp;tar</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>Copiar dirección del en&amp;lace</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Pegar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>Ha pulsado el botón de cierre. ¿Qué desea hacer?</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>Recordar mi elección</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>Salir del programa</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>Minimizar a la bandeja</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>Velocidad:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>速度</source>
        <translation>Velocidad</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>Eliminar este degradado</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Alcance</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>Añadir un degradado nuevo</translation>
    </message>
    <message>
        <source>渐变</source>
        <translation>Degradado</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>No hay animaciones disponibles</translation>
    </message>
    <message>
        <source>动画</source>
        <translation>Animación</translation>
    </message>
</context>
<context>
    <name>SSLOptWidget</name>
    <message>
        <source>高度：</source>
        <translation>Alto:</translation>
    </message>
    <message>
        <source>宽度：</source>
        <translation>Ancho:</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>把方块拖到LED所在的位置；框选可移动多个，滚轮缩放，右键平移。</source>
        <translation>Arrastre cada cuadro al lugar de su LED. Un recuadro selecciona varios. Rueda: zoom, botón derecho: mover la vista.</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>Re Pág y Av Pág seleccionan un LED, las flechas lo mueven, Ctrl+A los selecciona todos</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>Disposición de los LED</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>Pantalla %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>饱和度</source>
        <translation>Saturación</translation>
    </message>
    <message>
        <source>视频源</source>
        <translation>Fuente de vídeo</translation>
    </message>
    <message>
        <source>取色范围</source>
        <translation>Rango de color</translation>
    </message>
    <message>
        <source>自动去黑边</source>
        <translation>Quitar los bordes negros</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>Bordes negros</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>Suavizado</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>Protección de grises</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frecuencia</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>Estable</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Clásico</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>Ágil</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>Tranquilo</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>Cómo se reconocen los bordes negros. Estable: un borde se quita solo cuando sigue negro un tiempo. Los subtítulos, fundidos y destellos no lo confunden. Clásico: cada imagen se juzga por separado, para que los bordes se quiten al instante.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>Suaviza los cambios de color. Ágil: reduce el parpadeo y sigue al instante los cambios grandes. Tranquilo: todo cambia despacio, por si la luz resulta inquieta. Desactivado: cada imagen se muestra tal cual.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>Evita que las zonas casi grises se conviertan en colores vivos. Súbalo si la luz salta en escenas grises u oscuras y bájelo si los colores pálidos se ven grises. Al mínimo está desactivada.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>Cuántas veces por segundo se lee la pantalla. Automático: tantas como admita la tira. Baje el valor para aliviar el procesador.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automático</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>%1 por segundo</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>Activa el editor del modo de toda la pantalla, en el que se cambia la posición de muestreo de cada LED.</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>Controla todos los dispositivos</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>Guarda parte de los datos del puerto en el registro.</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>Abrir la carpeta de configuración</translation>
    </message>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>La interfaz usa enseguida el idioma elegido.</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>Lo que hace el botón del dispositivo al pulsarlo.</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>Encender/apagar la luz</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>Se inicia en segundo plano al iniciar sesión.</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>General;Atajos</translation>
    </message>
    <message>
        <source>模式 %1</source>
        <translation>Modo %1</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>Iniciar con el sistema</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>Minimizar a la bandeja en lugar de salir</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>Valor gamma de la luz. Afecta a todas las tiras LED.</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>Avanzado</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>Botón del dispositivo</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>Registro resumido de los datos del puerto</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>Para borrar los archivos de configuración hay que reiniciar la aplicación. Lumivar se cerrará.</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>Restablecer los ajustes</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>Opciones avanzadas de «Como la pantalla»</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>Muestra más opciones de «Como la pantalla», algunas tras reiniciar.</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>Borra todos los ajustes en el próximo inicio. Antes se pregunta.</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Sí</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Idioma</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>La carpeta con los ajustes y los registros.</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>General;Atajos;Avanzado</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>Los ajustes se han guardado. Reinicie el programa.</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>Cómo se lee la pantalla. Pruebe otro modo si la imagen no es correcta.</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>Capturas de pantalla</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>Si está marcado, el botón de cualquier dispositivo actúa sobre todos, si no, solo sobre el suyo.</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>切换下一个工作模式</source>
        <translation>Siguiente modo</translation>
    </message>
    <message>
        <source>主界面按钮行为</source>
        <translation>Botones de la ventana principal</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>Modo de captura de pantalla</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>Si está marcado, al cerrar la ventana principal las luces siguen y el programa queda en la bandeja.</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>General</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>Editor del modo de toda la pantalla</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>Con valores menores hay más luz, con mayores menos. 1.00 no cambia nada.</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>Guarda de vez en cuando una imagen de la pantalla capturada.</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>Activar el modo avanzado</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>Apagar las luces con la pantalla bloqueada</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>Las luces se apagan mientras la pantalla está bloqueada o apagada y vuelven con ella.</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>浅蓝墙</source>
        <translation>Pared celeste</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Verde</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>Con la tira en blanco, ajuste hasta que la pared también parezca blanca.</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Azul</translation>
    </message>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>La luz está apagada. Enciéndala para ver el resultado en la pared.</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Clásica</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>Pared crema</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>Pared blanca o gris</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>Ningún LED se oscurece más y los tonos se conservan. 0: sin mínimo.</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>Blanco de la tira</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>Atenuación</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Rojo</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>Brillo mínimo</translation>
    </message>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>%1 LED consumen unos %2 en blanco pleno. No ajuste más de lo que admite la fuente.</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>Natural conserva más matices en lo oscuro, tal como ve el ojo. Clásica es como en versiones anteriores.</translation>
    </message>
    <message>
        <source>自然</source>
        <translation>Natural</translation>
    </message>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>Color de pared;Luz y corriente</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>Pared</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>Alimentación</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>Mostrar blanco en la tira</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>Pared de madera</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>Corriente de un LED en blanco pleno</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>Color de pared</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Personalizado</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>Pared verde claro</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>Limitar la corriente total</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Cerrar</translation>
    </message>
</context>
</TS>
