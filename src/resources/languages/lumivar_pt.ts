<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>Saída padrão (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>Lê a área de trabalho X11 diretamente. Em uma sessão Wayland, só vê alguns programas.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>A área de trabalho entrega a sua imagem e, na primeira vez, pede o seu consentimento.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>Lê a área de trabalho diretamente do sistema.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>Modo de controle</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>Só o controlador atual</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>Todos os controladores</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>Sentido da instalação</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>Da esquerda para a direita</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>Da direita para a esquerda</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Modo de funcionamento</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Ligar</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Desligar</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brilho</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Outras opções</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Submodo</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>Pré-visualização da luz</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>Cor da parede...</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>Cor da parede, atenuação, brilho mínimo e limite de corrente</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>Configurar a fita</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>Ajuste o número de LEDs até que todos acendam.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>Total de LEDs:</translation>
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
        <source>子模式</source>
        <translation>Submodo</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Desligar</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Ligar</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Modo de funcionamento</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brilho</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Estado</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>Oi! Parece que a sua fita de LED está com um probleminha: ela desconecta toda hora, talvez por falta de energia. Tente ligá-la a uma porta USB da placa-mãe ou a um hub USB com fonte própria. Se continuar assim, fale com o suporte pós-venda. Pedimos mil desculpas pelo transtorno. Tomara que se resolva logo, boa sorte! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>权限</source>
        <translation>Permissões</translation>
    </message>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>Entregue pelo ambiente de trabalho, que pergunta na primeira utilização</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>O portal do ambiente de trabalho (xdg-desktop-portal) não responde. Inicie sessão novamente e tente de novo.</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Dispositivos</translation>
    </message>
    <message>
        <source>可以直接读取</source>
        <translation>Pode ser lido diretamente</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>Ecrã</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>Som</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>Não há regra do udev, por isso decidem os grupos do utilizador</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>Entregue pelo ambiente de trabalho, com o seu consentimento</translation>
    </message>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 está pronto</translation>
    </message>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>Não há ecrã. Execute-o numa sessão de ambiente de trabalho.</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>O programa não está em execução</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>O programa está em execução (%1)</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>O ambiente de trabalho não tem um portal que entregue o ecrã. Instale o xdg-desktop-portal e a parte dele para este ambiente.</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: controlado pelo Lumivar em execução (%2)</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>Luz sequencial</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>Cor única</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>Fluxo de cores</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>Luz emocional</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>Multicor 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>Multicor 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>Multicor 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>Multicor 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>Multicor 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>Multicor 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>Tela inteira</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>Parte de cima</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>Parte de baixo</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>Lado esquerdo</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>Lado direito</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>Cinema</translation>
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
        <translation>Imagens</translation>
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
        <source>声色渐变</source>
        <translation>Cor sonora</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>Respiração</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>Espelho sonoro</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>Níveis</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>Não há nenhuma fonte de som, por isso a fita fica apagada. Conecte um alto-falante ou escolha outra fonte de som.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>A tela escolhida não está conectada.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>O tamanho da tela ou da disposição não é adequado para este efeito.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>Não há nenhuma imagem de tela para seguir.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>O efeito atual não está disponível. Escolha outro.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>O modo de trabalho atual não está disponível. Escolha outro.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>Escolha, na caixa de diálogo da área de trabalho, as telas a seguir.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>Pedir a tela</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>A tela não foi compartilhada, por isso a fita não pode segui-la.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>Para seguir a tela é preciso o seu consentimento. A área de trabalho irá pedi-lo.</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>Esta área de trabalho não oferece imagem da tela. Instale o xdg-desktop-portal com o backend da sua área de trabalho ou mude o modo de captura da tela nos ajustes.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>O compartilhamento da tela terminou, por isso a fita não a segue mais.</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>A imagem da tela foi interrompida. Quando voltar, a fita continua sozinha.</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>Não há tela para ler. Inicie o programa em uma área de trabalho gráfica ou mude o modo de captura da tela nos ajustes.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>Há algum tempo que não se ouve nada. Toque música ou escolha a fonte que está a tocar.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>Não é possível contactar o servidor de som, por isso a fita fica apagada. Verifique se o serviço de som, como o PipeWire, está em execução.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>O relatório foi salvo:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>Não foi possível enviar o feedback:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>Não foi possível salvar o relatório:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>O feedback foi enviado</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>取消</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>正在发送反馈...</source>
        <translation>Enviando os comentários...</translation>
    </message>
    <message>
        <source>正在收集日志...</source>
        <translation>Reunindo os registros...</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>Ligue-a ao computador com um cabo de dados USB. Ela aparece aqui sozinha.</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>已复制</source>
        <translation>Copiado</translation>
    </message>
    <message>
        <source>允许使用</source>
        <translation>Permitir acesso</translation>
    </message>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>Nenhum dispositivo encontrado. Conecte uma fita de LED.</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>Feche esse programa. A fita liga-se então sozinha.</translation>
    </message>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>Identificando o dispositivo na porta %1</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>Sem permissão para abrir a porta %1</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>A fita funciona, mas o número de LEDs e a sua disposição são desconhecidos. Defina o número ou atualize o Lumivar.</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>Permita que os usuários deste computador usem a fita. O sistema pede uma vez a confirmação de um administrador.</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>O acesso foi permitido. Se a fita continuar apagada, desligue-a e volte a ligá-la. Se não bastar, execute estes comandos num terminal e inicie sessão novamente.</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>O modelo na porta %1 ainda não é conhecido: %2</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>O sistema ainda não respondeu. Também pode executar estes comandos num terminal e iniciar sessão novamente.</translation>
    </message>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>O adaptador da fita (%1) está ocupado: %2</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>Desligue a fita e volte a ligá-la, ou tente outro cabo ou outra entrada USB. Se não for uma fita, está tudo bem.</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>Instale ou carregue o driver ch341, depois desligue a fita e volte a ligá-la.</translation>
    </message>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>Talvez não seja uma fita. Se for, desligue-a, volte a ligá-la e atualize o Lumivar.</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>O adaptador da fita (%1) não tem driver</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>Confirme na caixa de diálogo do sistema.</translation>
    </message>
    <message>
        <source>其他程序</source>
        <translation>Outro programa</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>Execute estes comandos num terminal e inicie sessão novamente.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>O dispositivo na porta %1 não responde</translation>
    </message>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>Não foi autorizado. Tente de novo ou execute estes comandos num terminal e inicie sessão novamente.</translation>
    </message>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>Pare esse programa, desligue a fita e volte a ligá-la. Costuma ser o serviço braille brltty. Remova-o se ninguém precisar dele.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>O dispositivo na porta %1 não é reconhecido (%2)</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>A porta %1 está em uso: %2</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>Um momento.</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>Escolher cor</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>As setas mudam a saturação e o brilho, Page Up e Page Down o matiz</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>Círculo cromático</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>Cor das pontas %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>Cor %1, posição %2%</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>Arraste para mover, clique duas vezes para alterar a cor, clique com o botão direito para excluir</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>Clique duas vezes para alterar a cor das duas pontas</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>Alterar</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Excluir</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>Escolher cor</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>Clique para adicionar uma cor</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>Tab passa para a próxima cor, as setas a movem, Enter altera, Insert adiciona, Delete exclui</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>Cor única</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>Definir a cor da fita</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>Multicor</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>Sincronizar tela</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>Dê movimento à música!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>Gráficos</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>Luz sequencial</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>已是最新版本</source>
        <translation>Você já tem a versão mais recente</translation>
    </message>
    <message>
        <source>发送反馈</source>
        <translation>Enviar comentários</translation>
    </message>
    <message>
        <source>当前版本号：</source>
        <translation>Versão atual:</translation>
    </message>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>Versão;Comentários;Contato</translation>
    </message>
    <message>
        <source>保存报告...</source>
        <translation>Salvar relatório...</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>Inclui os registros, as versões e os ajustes. Os dados pessoais são removidos.</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>Enviar dados de uso</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>São enviados apenas os horários em que o programa inicia e encerra e a sua versão. Nada mais.</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>Atualizar</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Ajuda</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>Escreva suas sugestões ou os problemas encontrados</translation>
    </message>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>Os registros são anexados para que possamos encontrar a causa da falha.</translation>
    </message>
    <message>
        <source>最新版本号：</source>
        <translation>Versão mais recente:</translation>
    </message>
    <message>
        <source>您的联系方式</source>
        <translation>Seus dados de contato</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>Versão;Comentários</translation>
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
        <translation>Mais produtos</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>Configurar a fita</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Nome do dispositivo</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>Prima no campo a tecla desejada. Tab sai do campo, Esc cancela.</translation>
    </message>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>Esta combinação não pode ser usada: está ocupada ou o teclado não tem essa tecla.</translation>
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
    <message>
        <source>修改快捷键</source>
        <translation>Alterar atalho</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Fechar</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>功能</source>
        <translation>Ação</translation>
    </message>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>Outro programa ocupa este atalho. Passará a funcionar assim que for libertado.</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>Este ambiente não deixa que os programas ocupem teclas, por isso os atalhos não funcionam aqui.</translation>
    </message>
    <message>
        <source>修改快捷键...</source>
        <translation>Alterar atalho...</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>O teclado atual não tem essa tecla.</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Atalho</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>O ambiente ainda não lhe atribuiu teclas. Faça-o nas definições de teclado do sistema.</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (definido pelo ambiente)</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>Os atalhos não foram permitidos quando o ambiente perguntou. Edite um deles e ele voltará a perguntar.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>提升亮度</source>
        <translation>Aumentar o brilho</translation>
    </message>
    <message>
        <source>切换到上一个模式</source>
        <translation>Mudar para o modo anterior</translation>
    </message>
    <message>
        <source>全开全关切换</source>
        <translation>Ligar ou desligar tudo</translation>
    </message>
    <message>
        <source>切换到下一个模式</source>
        <translation>Mudar para o modo seguinte</translation>
    </message>
    <message>
        <source>降低亮度</source>
        <translation>Diminuir o brilho</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>Todos os dispositivos</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>As configurações não podem ser salvas no momento. Verifique o espaço livre em disco e a permissão de gravação da pasta de configurações. Elas serão salvas assim que possível.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>Não foi possível abrir o instalador:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>O brilho está limitado para proteger a fonte de alimentação.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>Intensidade:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>new</source>
        <translation>novo</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>Início</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>Ligar tudo</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>Desligar tudo</translation>
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
        <translation>Ajuda</translation>
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
        <translation>Fechar</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Sair</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>Há uma nova versão. Deseja baixar o pacote de instalação mais recente?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Sim</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Não</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>Baixando o pacote de instalação mais recente</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>Cancelar o download</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>Fonte de som:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>Escolher cor</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>O download não foi concluído. Verifique a rede e tente novamente.</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>Não é possível salvar o arquivo baixado. Verifique o espaço em disco.</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>O arquivo baixado não é o correto e foi excluído.</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Selecionar tudo</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Aumentar</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>&amp;Diminuir</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>Cores &amp;básicas</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>&amp;Capturar cor da tela</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>Cursor em %1, %2
Pressione ESC para cancelar</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>Cores &amp;personalizadas</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>&amp;Adicionar às personalizadas</translation>
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
        <translation>Ve&amp;rmelho:</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>V&amp;erde:</translation>
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
        <translation>Procurar em:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Voltar</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Avançar</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Pasta superior</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Criar nova pasta</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Vista de lista</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Vista detalhada</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Tipo de arquivo:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>&amp;Nome do arquivo:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Salvar</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Renomear</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>E&amp;xcluir</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>Mostrar arquivos &amp;ocultos</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;Nova pasta</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Nova pasta</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 já existe.
Deseja substituí-lo?</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Pasta</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>Nome</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamanho</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Data de modificação</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Computador</translation>
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
        <translation>&amp;Cancelar</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fechar</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>Não foi possível registrar %1. Erro: %2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>Não foi possível liberar %1. Erro: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Desfazer</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Refazer</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Recor&amp;tar</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Co&amp;lar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Excluir</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Selecionar tudo</translation>
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
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Sim</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Não</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>Rolar até aqui</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Borda esquerda</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Início</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Borda direita</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Fim</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>Página à esquerda</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Página acima</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>Página à direita</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Página abaixo</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Rolar para a esquerda</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Rolar para cima</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Rolar para a direita</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Rolar para baixo</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Desfazer</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Refazer</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Recor&amp;tar</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copiar</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>Copiar &amp;endereço do link</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Co&amp;lar</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Excluir</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Selecionar tudo</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>Você clicou em fechar. O que deseja fazer?</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>Lembrar minha escolha</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>Sair do programa</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>Minimizar para a bandeja</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>Velocidade:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>速度</source>
        <translation>Velocidade</translation>
    </message>
    <message>
        <source>渐变</source>
        <translation>Gradiente</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>Excluir este gradiente</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Alcance</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Excluir</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Adicionar</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>Adicionar um novo gradiente</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>Nenhuma animação disponível</translation>
    </message>
    <message>
        <source>动画</source>
        <translation>Animação</translation>
    </message>
</context>
<context>
    <name>SSLOptWidget</name>
    <message>
        <source>把方块拖到LED所在的位置；框选可移动多个，滚轮缩放，右键平移。</source>
        <translation>Arraste cada quadrado para o lugar do seu LED. Uma moldura seleciona vários. Roda: zoom, botão direito: mover a vista.</translation>
    </message>
    <message>
        <source>高度：</source>
        <translation>Altura:</translation>
    </message>
    <message>
        <source>宽度：</source>
        <translation>Largura:</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Redefinir</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>Page Up e Page Down selecionam um LED, as setas o movem, Ctrl+A seleciona todos</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>Disposição dos LEDs</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>Tela %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>自动去黑边</source>
        <translation>Remover bordas pretas</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>Saturação</translation>
    </message>
    <message>
        <source>视频源</source>
        <translation>Fonte de vídeo</translation>
    </message>
    <message>
        <source>取色范围</source>
        <translation>Faixa de cor</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>Bordas pretas</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>Suavização</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>Proteção de cinzas</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frequência</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>Estável</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Clássico</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Desligada</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>Ágil</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>Calma</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>Como as bordas pretas são reconhecidas. Estável: uma borda só é removida depois de continuar preta por um tempo. Legendas, transições e clarões não a confundem. Clássico: cada quadro é avaliado sozinho, para remover as bordas na hora.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>Suaviza as mudanças de cor. Ágil: reduz a cintilação e segue na hora as mudanças grandes. Calma: tudo muda devagar, para quando a luz está agitada demais. Desligada: cada quadro é mostrado como é.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>Evita que partes quase cinzas da imagem virem cores vivas. Aumente se a luz salta em cenas cinzas ou escuras e diminua se cores claras parecem cinzas. No mínimo, fica desligada.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>Quantas vezes por segundo a tela é lida. Automática: tantas quantas a fita aceita. Diminua para poupar o processador.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automática</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>%1 por segundo</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>切换下一个工作模式</source>
        <translation>Próximo modo</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Sim</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>Botão do dispositivo</translation>
    </message>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>Ativa o editor do modo de tela inteira, no qual se altera a posição de amostragem de cada LED.</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>Salva parte dos dados da porta no registro.</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>Salva de vez em quando uma imagem da tela capturada.</translation>
    </message>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>A interface usa imediatamente o idioma escolhido.</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>Mostra mais opções de «Sincronizar tela», algumas após reiniciar.</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>Geral</translation>
    </message>
    <message>
        <source>模式 %1</source>
        <translation>Modo %1</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>Avançado</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>Acender/apagar a luz</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>Minimizar para a bandeja em vez de sair</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>O que o botão do dispositivo faz ao ser pressionado.</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Idioma</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Não</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>Geral;Atalhos</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>Editor do modo de tela inteira</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>Como a tela é lida. Tente outro modo se a imagem estiver errada.</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>Os ajustes foram salvos. Reinicie o programa.</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>Capturas da tela</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>Opções avançadas de «Sincronizar tela»</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>Restaurar os ajustes padrão</translation>
    </message>
    <message>
        <source>主界面按钮行为</source>
        <translation>Botões da janela principal</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>Inicia em segundo plano quando você entra no sistema.</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>Iniciar com o sistema</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>Apaga todos os ajustes no próximo início. Antes será feita uma pergunta.</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>Se marcado, o botão de qualquer dispositivo age sobre todos, senão, apenas sobre o próprio.</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>Geral;Atalhos;Avançado</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>Registro resumido dos dados da porta</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>Controla todos os dispositivos</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>Modo de captura da tela</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>Para limpar os arquivos de configuração é preciso reiniciar o aplicativo. O Lumivar será encerrado.</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>Abrir a pasta de configuração</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>Valor gama da luz. Afeta todas as fitas de LED.</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>A pasta com os ajustes e os registros.</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>Ativar o modo avançado</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>Valores menores dão mais luz, maiores dão menos. 1.00 não altera nada.</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>Se marcado, ao fechar a janela principal as luzes continuam e o programa fica na bandeja.</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>Apagar as luzes com a tela bloqueada</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>As luzes se apagam enquanto a tela está bloqueada ou desligada e voltam com ela.</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>%1 LEDs consomem cerca de %2 em branco total. Não defina mais do que a fonte suporta.</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>Parede de madeira</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>Brilho mínimo</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>Branco da fita</translation>
    </message>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>A luz está apagada. Ligue-a para ver o resultado na parede.</translation>
    </message>
    <message>
        <source>自然</source>
        <translation>Natural</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>Nenhum LED fica mais escuro, e os tons se mantêm. 0: sem mínimo.</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>Alimentação</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>Com a fita em branco, ajuste até a parede também parecer branca.</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Clássica</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>Limitar a corrente total</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>Parede creme</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>Parede verde-clara</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Personalizado</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Vermelho</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>Cor da parede</translation>
    </message>
    <message>
        <source>浅蓝墙</source>
        <translation>Parede azul-clara</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>Natural conserva mais tons no escuro, como o olho os vê. Clássica é como em versões anteriores.</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>Mostrar branco na fita</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Verde</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Azul</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>Restaurar padrão</translation>
    </message>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>Cor da parede;Luz e energia</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>Parede branca ou cinza</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>Corrente de um LED em branco total</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>Parede</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>Atenuação</translation>
    </message>
</context>
</TS>
