<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>기본 출력 (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>X11 데스크톱을 직접 읽습니다. Wayland 세션에서는 일부 프로그램만 보입니다.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>데스크톱이 화면 영상을 넘겨줍니다. 처음 사용할 때 동의를 요청합니다.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>시스템에서 데스크톱을 직접 읽습니다.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>제어 방식</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>현재 컨트롤러만 설정</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>모든 컨트롤러 설정</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>설치 방향</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>왼쪽에서 오른쪽</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>오른쪽에서 왼쪽</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>작동 모드</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>작동 상태</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>켜기</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>끄기</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>밝기</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>기타 옵션</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>하위 모드</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>조명 미리 보기</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>벽 색상...</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>벽 색상, 디밍, 최소 밝기, 전류 제한</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>LED 스트립 설정</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>모든 LED가 켜지도록 LED 개수를 조정하세요.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>총 LED 개수:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>확인</translation>
    </message>
</context>
<context>
    <name>DeskDuplManager</name>
    <message>
        <source>%1 (%2 × %3, 主屏幕)</source>
        <translation>%1 (%2 × %3, 주 화면)</translation>
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
        <translation>작동 모드</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>하위 모드</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>작동 상태</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>밝기</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>켜기</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>끄기</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>안녕하세요! LED 스트립에 작은 문제가 생긴 것 같아요. 연결이 자주 끊기는 걸 보니 전력이 부족한 것 같습니다. 메인보드의 USB 포트나 별도 전원이 있는 USB 허브에 꽂아 보세요. 그래도 계속되면 고객 지원에 문의해 주세요. 불편을 드려 정말 죄송합니다. 빨리 해결되길 바랄게요, 파이팅! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>权限</source>
        <translation>권한</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>프로그램 실행 중(%1)</translation>
    </message>
    <message>
        <source>可以直接读取</source>
        <translation>직접 읽을 수 있음</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>udev 규칙이 없어 사용자 그룹에 따라 결정됩니다</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>데스크톱 포털(xdg-desktop-portal)이 응답하지 않습니다. 다시 로그인한 뒤 시도해 주세요.</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>장치</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>데스크톱이 전달하며, 동의하셨습니다</translation>
    </message>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>데스크톱이 전달하며, 처음 사용할 때 동의를 묻습니다</translation>
    </message>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>디스플레이가 없습니다. 데스크톱 세션에서 실행해 주세요.</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>프로그램이 실행되고 있지 않습니다</translation>
    </message>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 준비됨</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: 실행 중인 Lumivar가 제어하고 있습니다(%2)</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>화면</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>화면을 전달할 포털이 없습니다. xdg-desktop-portal과 이 데스크톱용 구성 요소를 설치해 주세요.</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>소리</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>흐르는 조명</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>단색</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>흐르는 빛깔</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>무드 섀도</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>무지개 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>무지개 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>무지개 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>무지개 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>무지개 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>무지개 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>전체 화면</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>화면 위쪽 절반</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>화면 아래쪽 절반</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>화면 왼쪽 절반</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>화면 오른쪽 절반</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>영화</translation>
    </message>
    <message>
        <source>音乐1</source>
        <translation>음악 1</translation>
    </message>
    <message>
        <source>音乐2</source>
        <translation>음악 2</translation>
    </message>
    <message>
        <source>音乐3</source>
        <translation>음악 3</translation>
    </message>
    <message>
        <source>音乐4</source>
        <translation>음악 4</translation>
    </message>
    <message>
        <source>音乐5</source>
        <translation>음악 5</translation>
    </message>
    <message>
        <source>音乐6</source>
        <translation>음악 6</translation>
    </message>
    <message>
        <source>音乐7</source>
        <translation>음악 7</translation>
    </message>
    <message>
        <source>音乐8</source>
        <translation>음악 8</translation>
    </message>
    <message>
        <source>图像模式</source>
        <translation>이미지</translation>
    </message>
    <message>
        <source>音乐模式1</source>
        <translation>음악 모드 1</translation>
    </message>
    <message>
        <source>音乐模式2</source>
        <translation>음악 모드 2</translation>
    </message>
    <message>
        <source>音乐模式3</source>
        <translation>음악 모드 3</translation>
    </message>
    <message>
        <source>音乐模式4</source>
        <translation>음악 모드 4</translation>
    </message>
    <message>
        <source>声色渐变</source>
        <translation>음량 컬러</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>레벨 미터</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>미러 밴드</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>음악의 호흡</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>사용할 수 있는 오디오 소스가 없어 LED 스트립이 꺼져 있습니다. 스피커를 연결하거나 다른 오디오 소스를 선택하세요.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>따라갈 화면 영상이 없습니다.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>화면 또는 레이아웃의 크기가 이 효과에 맞지 않습니다.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>선택한 화면이 연결되어 있지 않습니다.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>현재 작동 모드를 사용할 수 없습니다. 다른 모드를 선택하세요.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>현재 효과를 사용할 수 없습니다. 다른 효과를 선택하세요.</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>화면 영상이 끊겼습니다. 다시 나타나면 자동으로 계속됩니다.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>화면 공유가 종료되어 조명이 더 이상 따라가지 않습니다.</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>이 데스크톱은 화면 영상을 제공하지 않습니다. xdg-desktop-portal과 데스크톱에 맞는 백엔드를 설치하거나 설정에서 화면 캡처 방식을 바꾸세요.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>화면을 따라가려면 동의가 필요합니다. 데스크톱이 동의를 요청합니다.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>데스크톱 대화 상자에서 따라갈 화면을 선택하세요.</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>화면이 공유되지 않아 조명이 따라갈 수 없습니다.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>화면 요청</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>읽을 수 있는 화면이 없습니다. 그래픽 데스크톱에서 프로그램을 시작하거나 설정에서 화면 캡처 방식을 바꾸세요.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>한동안 소리가 들리지 않습니다. 음악을 재생하거나 재생 중인 소스를 선택해 주세요.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>사운드 서버에 연결할 수 없어 스트립이 꺼져 있습니다. PipeWire 같은 시스템 사운드 서비스가 실행 중인지 확인해 주세요.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>보고서를 저장했습니다:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>피드백을 보내지 못했습니다. 원인:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>보고서를 저장하지 못했습니다. 원인:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>피드백을 보냈습니다</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>取消</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>正在发送反馈...</source>
        <translation>피드백을 보내는 중...</translation>
    </message>
    <message>
        <source>正在收集日志...</source>
        <translation>로그를 수집하는 중...</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>已复制</source>
        <translation>복사됨</translation>
    </message>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>USB 데이터 케이블로 컴퓨터에 연결하면 여기에 자동으로 나타납니다.</translation>
    </message>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>장치를 찾을 수 없습니다. 라이트 스트립을 연결해 주세요.</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>복사</translation>
    </message>
    <message>
        <source>允许使用</source>
        <translation>접근 허용</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>스트립이 아닐 수 있습니다. 스트립이라면 다시 연결하고 Lumivar를 업데이트해 주세요.</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>접근이 허용되었습니다. 스트립이 켜지지 않으면 다시 연결해 보고, 그래도 안 되면 터미널에서 아래 명령을 실행한 뒤 다시 로그인해 주세요.</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>잠시만 기다려 주세요.</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>이 컴퓨터의 사용자가 스트립을 쓸 수 있게 합니다. 시스템이 관리자에게 한 번 확인합니다.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>포트 %1의 장치를 식별할 수 없습니다(%2)</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>포트 %1을(를) 열 권한이 없습니다</translation>
    </message>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>그 프로그램을 종료하면 스트립이 자동으로 연결됩니다.</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>포트 %1의 모델은 아직 등록되지 않았습니다: %2</translation>
    </message>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>그 프로그램을 멈추고 다시 연결해 주세요. 흔히 점자 서비스 brltty가 원인이며, 필요 없으면 제거할 수 있습니다.</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>터미널에서 아래 명령을 실행한 뒤 다시 로그인해 주세요.</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>스트립 어댑터(%1)의 드라이버가 없습니다</translation>
    </message>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>스트립 어댑터(%1) 사용 중: %2</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>시스템 대화 상자에서 확인해 주세요.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>포트 %1의 장치가 응답하지 않습니다</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>포트 %1 사용 중: %2</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>다시 연결하거나 다른 케이블이나 USB 단자를 사용해 보세요. 스트립이 아니라면 그대로 두셔도 됩니다.</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>사용할 수 있지만 LED 수와 배치를 알 수 없습니다. 수를 설정하거나 Lumivar를 업데이트해 주세요.</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>드라이버 ch341을 설치하거나 불러온 다음 다시 연결해 주세요.</translation>
    </message>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>허용되지 않았습니다. 다시 시도하거나, 터미널에서 아래 명령을 실행한 뒤 다시 로그인해 주세요.</translation>
    </message>
    <message>
        <source>其他程序</source>
        <translation>다른 프로그램</translation>
    </message>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>포트 %1의 장치를 확인하는 중</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>시스템이 아직 응답하지 않습니다. 터미널에서 아래 명령을 실행한 뒤 다시 로그인해도 됩니다.</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>색 선택</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>색상환</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>화살표 키로 채도와 밝기, Page Up과 Page Down 키로 색조 변경</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>양 끝의 색상 %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>색상 %1, 위치 %2%</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>드래그하여 이동, 두 번 클릭하여 색상 변경, 오른쪽 클릭하여 삭제</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>두 번 클릭하여 양 끝의 색상 변경</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>변경</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>삭제</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>색 선택</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>클릭하여 색상 추가</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>Tab 키로 색상 전환, 화살표 키로 이동, Enter 키로 변경, Insert 키로 추가, Delete 키로 삭제</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>단색</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>LED 스트립의 색을 설정합니다</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>무지개</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>화면 동기화</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>음악</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>음악을 빛으로 움직여 보세요!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>그래픽</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>흐르는 조명</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>버전 정보;피드백;문의하기</translation>
    </message>
    <message>
        <source>发送反馈</source>
        <translation>피드백 보내기</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>버전 정보;피드백</translation>
    </message>
    <message>
        <source>最新版本号：</source>
        <translation>최신 버전:</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>사용 현황 보내기</translation>
    </message>
    <message>
        <source>您的联系方式</source>
        <translation>연락처</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>当前版本号：</source>
        <translation>현재 버전:</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>최신 버전입니다</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>프로그램이 시작되고 종료된 시각과 버전만 보내며, 그 밖의 정보는 보내지 않습니다.</translation>
    </message>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>문제의 원인을 파악할 수 있도록 로그가 함께 첨부됩니다.</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>도움말</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>업데이트</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>제안 사항이나 겪고 있는 문제를 적어 주세요</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>로그, 버전 정보, 설정이 포함됩니다. 개인 정보는 제거됩니다.</translation>
    </message>
    <message>
        <source>保存报告...</source>
        <translation>보고서 저장...</translation>
    </message>
</context>
<context>
    <name>HomePage</name>
    <message>
        <source>灯光设备</source>
        <translation>조명 장치</translation>
    </message>
    <message>
        <source>更多产品</source>
        <translation>더 많은 제품</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>LED 스트립 설정</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>장치 이름</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>修改快捷键</source>
        <translation>단축키 변경</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>키</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>이 조합은 사용할 수 없습니다. 이미 사용 중이거나 키보드에 없는 키입니다.</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>확인</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>입력란에서 원하는 키를 누르세요. Tab은 입력란을 벗어나고 Esc는 취소합니다.</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>功能</source>
        <translation>기능</translation>
    </message>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>다른 프로그램이 이 단축키를 사용 중입니다. 해제되면 자동으로 작동합니다.</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>현재 키보드에는 이 키가 없습니다.</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>이 데스크톱에서는 프로그램이 키를 차지할 수 없어 단축키가 작동하지 않습니다.</translation>
    </message>
    <message>
        <source>修改快捷键...</source>
        <translation>단축키 변경...</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (데스크톱에서 지정)</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>데스크톱이 아직 키를 지정하지 않았습니다. 시스템의 키보드 설정에서 지정하세요.</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>데스크톱이 물었을 때 단축키가 허용되지 않았습니다. 하나를 편집하면 다시 묻습니다.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>切换到上一个模式</source>
        <translation>이전 모드로 전환</translation>
    </message>
    <message>
        <source>切换到下一个模式</source>
        <translation>다음 모드로 전환</translation>
    </message>
    <message>
        <source>降低亮度</source>
        <translation>밝기 낮추기</translation>
    </message>
    <message>
        <source>全开全关切换</source>
        <translation>모두 켜기/끄기 전환</translation>
    </message>
    <message>
        <source>提升亮度</source>
        <translation>밝기 높이기</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>모든 기기</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>지금은 설정을 저장할 수 없습니다. 디스크 여유 공간과 설정 폴더의 쓰기 권한을 확인하세요. 복구되면 자동으로 저장됩니다.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>설치 파일을 열 수 없습니다:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>전원 보호를 위해 밝기가 제한되었습니다.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>세기:</translation>
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
        <translation>홈</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>모두 켜기</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>모두 끄기</translation>
    </message>
    <message>
        <source>Alt+N</source>
        <translation>Alt+N</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>설정</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>도움말</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>최소화</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>종료</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>새 버전이 있습니다. 최신 설치 파일을 다운로드하시겠습니까?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>예</translation>
    </message>
    <message>
        <source>否</source>
        <translation>아니요</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>최신 설치 파일을 다운로드하는 중</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>다운로드 취소</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>오디오 소스:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>색 선택</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>다운로드가 완료되지 않았습니다. 네트워크를 확인한 후 다시 시도하세요</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>다운로드한 파일을 저장할 수 없습니다. 디스크 공간을 확인하세요</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>다운로드한 파일이 올바르지 않아 삭제했습니다</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>모두 선택(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>증가(&amp;U)</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>감소(&amp;D)</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>기본 색(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>화면에서 색 선택(&amp;P)</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>커서 위치: %1, %2
ESC 키를 누르면 취소됩니다</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>사용자 지정 색(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>사용자 지정 색에 추가(&amp;A)</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>색조(&amp;E):</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>채도(&amp;S):</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>명도(&amp;V):</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>빨강(&amp;R):</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>녹색(&amp;G):</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>파랑(&amp;U):</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>알파 채널(&amp;L):</translation>
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
        <translation>찾는 위치:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>앞으로</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>상위 폴더</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>새 폴더 만들기</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>목록 보기</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>자세히 보기</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>파일 형식:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>파일 이름(&amp;N):</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>저장(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>이름 바꾸기(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>삭제(&amp;D)</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>숨김 파일 보기(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>새 폴더(&amp;N)</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>새 폴더</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1이(가) 이미 있습니다.
바꾸시겠습니까?</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>폴더</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>크기</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>종류</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>수정한 날짜</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>컴퓨터</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>확인(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>취소(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>닫기(&amp;C)</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>%1을(를) 등록하지 못했습니다. 오류: %2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>%1 등록을 해제하지 못했습니다. 오류: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>실행 취소(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>다시 실행(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>잘라내기(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>복사(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>붙여넣기(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>모두 선택</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>확인</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>예(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>아니요(&amp;N)</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>여기로 스크롤</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>왼쪽 끝</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>맨 위</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>오른쪽 끝</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>맨 아래</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>한 페이지 왼쪽</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>한 페이지 위</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>한 페이지 오른쪽</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>한 페이지 아래</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>왼쪽으로 스크롤</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>위로 스크롤</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>오른쪽으로 스크롤</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>아래로 스크롤</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>실행 취소(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>다시 실행(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>잘라내기(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>복사(&amp;C)</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>링크 주소 복사(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>붙여넣기(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>모두 선택</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>닫기 버튼을 눌렀습니다. 어떻게 할까요?</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>선택 기억하기</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>프로그램 종료</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>트레이로 최소화</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>속도:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>渐变</source>
        <translation>그라데이션</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>범위</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>추가</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>새 그라데이션 추가</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>이 그라데이션 삭제</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>속도</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>선택할 애니메이션이 없습니다</translation>
    </message>
    <message>
        <source>动画</source>
        <translation>애니메이션</translation>
    </message>
</context>
<context>
    <name>SSLOptWidget</name>
    <message>
        <source>宽度：</source>
        <translation>너비:</translation>
    </message>
    <message>
        <source>高度：</source>
        <translation>높이:</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>초기화</translation>
    </message>
    <message>
        <source>把方块拖到LED所在的位置；框选可移动多个，滚轮缩放，右键平移。</source>
        <translation>사각형을 LED가 있는 위치로 끌어 놓으세요. 영역을 그리면 여러 개를 선택합니다. 휠: 확대/축소, 오른쪽 버튼: 이동.</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>Page Up과 Page Down 키로 LED 선택, 화살표 키로 이동, Ctrl+A로 모두 선택</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>LED 배치</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>화면 %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>自动去黑边</source>
        <translation>검은 테두리 자동 제거</translation>
    </message>
    <message>
        <source>取色范围</source>
        <translation>색상 추출 범위</translation>
    </message>
    <message>
        <source>视频源</source>
        <translation>영상 소스</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>채도</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>검은 테두리</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>부드러움</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>회색 보호</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>프레임 속도</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>안정</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>기본</translation>
    </message>
    <message>
        <source>关</source>
        <translation>끔</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>빠르게</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>차분하게</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>검은 테두리를 알아보는 방법입니다. 안정: 계속 검은 상태일 때만 제거하며 자막, 페이드, 섬광에 흔들리지 않습니다. 기본: 프레임마다 따로 판단하며, 테두리를 바로 제거하고 싶을 때 적합합니다.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>색 변화를 부드럽게 합니다. 빠르게: 깜박임을 줄이고 큰 변화는 바로 따라갑니다. 차분하게: 모든 변화가 천천히 일어나며, 빛이 산만할 때 적합합니다. 끔: 모든 프레임을 그대로 표시합니다.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>회색에 가까운 부분이 선명한 색으로 바뀌지 않게 합니다. 회색이거나 어두운 장면에서 빛이 튀면 높이고, 옅은 색이 회색으로 보이면 낮추십시오. 가장 낮으면 꺼집니다.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>1초에 화면을 읽는 횟수입니다. 자동: LED 스트립이 받을 수 있는 만큼 읽습니다. 프로세서 부담을 줄이려면 낮추십시오.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>자동</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>초당 %1회</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>语言</source>
        <translation>언어</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>설정 폴더 열기</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>화면을 읽는 방식입니다. 화면이 올바르지 않으면 다른 방식을 선택해 보세요.</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>설정</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>장치의 버튼을 눌렀을 때의 동작입니다.</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>고급</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>시스템 시작 시 자동 실행</translation>
    </message>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>각 LED의 샘플링 위치를 편집할 수 있는 전체 화면 모드 편집기를 켭니다.</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>일반;단축키</translation>
    </message>
    <message>
        <source>切换下一个工作模式</source>
        <translation>다음 작동 모드</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>화면 동기화의 옵션을 더 표시합니다. 일부는 다시 시작한 뒤에 적용됩니다.</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>캡처한 화면의 이미지를 가끔 저장합니다.</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>설정 파일을 정리하려면 응용 프로그램을 다시 시작해야 합니다. 이 작업을 하면 Lumivar가 종료됩니다.</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>선택하면 어느 장치의 버튼이든 모든 장치를 제어하고, 선택하지 않으면 해당 장치만 제어합니다.</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>선택하면 기본 창을 닫아도 조명이 계속 작동하고 프로그램은 트레이에 남습니다.</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>포트 데이터의 일부를 로그에 저장합니다.</translation>
    </message>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>선택한 언어가 화면에 바로 적용됩니다.</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>조명 켜기/끄기</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>主界面按钮行为</source>
        <translation>기본 창 버튼의 동작</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>화면 스냅샷</translation>
    </message>
    <message>
        <source>是</source>
        <translation>예</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>로그인하면 백그라운드에서 시작됩니다.</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>화면 동기화 고급 옵션</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>전체 화면 모드 편집기</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>포트 데이터 요약 로그</translation>
    </message>
    <message>
        <source>模式 %1</source>
        <translation>방식 %1</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>기본 설정 복원</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>모든 장치 제어</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>장치의 버튼</translation>
    </message>
    <message>
        <source>否</source>
        <translation>아니요</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>일반;단축키;고급</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>설정과 로그가 저장된 폴더입니다.</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>다음에 시작할 때 모든 설정을 삭제합니다. 먼저 확인을 묻습니다.</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>값이 작을수록 밝고 클수록 어두워집니다. 1.00이면 그대로입니다.</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>설정이 저장되었습니다. 프로그램을 다시 시작하세요.</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>화면 캡처 방식</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>종료하지 않고 트레이로 최소화</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>일반</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>고급 모드 사용</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>빛의 감마 값입니다. 모든 LED 스트립에 적용됩니다.</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>화면이 잠긴 동안 조명 끄기</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>화면이 잠기거나 꺼져 있는 동안 조명이 꺼지고, 화면이 돌아오면 다시 켜집니다.</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>LED %1개는 완전한 흰색에서 약 %2가 필요합니다. 전원의 정격을 넘지 않게 설정하세요.</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>기본값 복원</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>전체 전류 제한</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>스트립을 흰색으로 켜고 벽도 희게 보일 때까지 조절하세요.</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>자연스럽게: 어두운 색의 단계를 더 많이 살려 눈이 느끼는 것에 가깝습니다. 기존 방식: 이전 버전과 같습니다.</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>초록</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>나무 벽</translation>
    </message>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>조명이 꺼져 있습니다. 켜면 벽에서 결과를 볼 수 있습니다.</translation>
    </message>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>벽 색상;밝기와 전원</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>파랑</translation>
    </message>
    <message>
        <source>浅蓝墙</source>
        <translation>하늘색 벽</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>스트립의 흰색</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>크림색 벽</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>어떤 LED도 이보다 어두워지지 않으며 색조는 유지됩니다. 0은 끔.</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>전원</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>벽 색상</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>기존 방식</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>연두색 벽</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>최소 밝기</translation>
    </message>
    <message>
        <source>自然</source>
        <translation>자연스럽게</translation>
    </message>
    <message>
        <source>红</source>
        <translation>빨강</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>스트립에 흰색 표시</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>사용자 설정</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>디밍</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>벽</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>완전한 흰색일 때 LED 하나의 전류</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>흰색 또는 회색 벽</translation>
    </message>
</context>
</TS>
