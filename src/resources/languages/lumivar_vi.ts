<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="vi" sourcelanguage="zh_CN">
<context>
    <name>AudioCapManager</name>
    <message>
        <source>默认输出 (%1)</source>
        <translation>Đầu ra mặc định (%1)</translation>
    </message>
</context>
<context>
    <name>CaptureMode</name>
    <message>
        <source>直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。</source>
        <translation>Đọc trực tiếp màn hình nền X11. Trong phiên Wayland chỉ thấy được một số chương trình.</translation>
    </message>
    <message>
        <source>由桌面转交画面，首次使用时会征求您的同意。</source>
        <translation>Màn hình nền chuyển hình ảnh của nó và hỏi sự đồng ý của bạn trong lần đầu.</translation>
    </message>
    <message>
        <source>直接读取系统的桌面画面。</source>
        <translation>Đọc màn hình nền trực tiếp từ hệ thống.</translation>
    </message>
</context>
<context>
    <name>ControlPage</name>
    <message>
        <source>控制方式</source>
        <translation>Cách điều khiển</translation>
    </message>
    <message>
        <source>只设置当前控制器</source>
        <translation>Chỉ bộ điều khiển hiện tại</translation>
    </message>
    <message>
        <source>设置所有控制器</source>
        <translation>Tất cả bộ điều khiển</translation>
    </message>
    <message>
        <source>安装方式</source>
        <translation>Hướng lắp đặt</translation>
    </message>
    <message>
        <source>从左至右</source>
        <translation>Từ trái sang phải</translation>
    </message>
    <message>
        <source>从右至左</source>
        <translation>Từ phải sang trái</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Chế độ hoạt động</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Trạng thái hoạt động</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Bật đèn</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Tắt đèn</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Độ sáng</translation>
    </message>
    <message>
        <source>其他选项</source>
        <translation>Tùy chọn khác</translation>
    </message>
    <message>
        <source>子模式</source>
        <translation>Chế độ con</translation>
    </message>
    <message>
        <source>灯光预览</source>
        <translation>Xem trước ánh sáng</translation>
    </message>
    <message>
        <source>墙面颜色...</source>
        <translation>Màu tường...</translation>
    </message>
    <message>
        <source>墙面颜色、调光方式、最低亮度和电流限制</source>
        <translation>Màu tường, cách giảm sáng, độ sáng tối thiểu và giới hạn dòng điện</translation>
    </message>
</context>
<context>
    <name>ControllerConfigDialog</name>
    <message>
        <source>灯带配置</source>
        <translation>Cấu hình dải LED</translation>
    </message>
    <message>
        <source>调整LED数量，使所有LED全部亮起。</source>
        <translation>Điều chỉnh số lượng LED cho đến khi tất cả đều sáng.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Hủy</translation>
    </message>
    <message>
        <source>LED总数：</source>
        <translation>Tổng số LED:</translation>
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
        <translation>%1 (%2 × %3, màn hình chính)</translation>
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
        <translation>Chế độ con</translation>
    </message>
    <message>
        <source>开灯</source>
        <translation>Bật đèn</translation>
    </message>
    <message>
        <source>工作模式</source>
        <translation>Chế độ hoạt động</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Độ sáng</translation>
    </message>
    <message>
        <source>关灯</source>
        <translation>Tắt đèn</translation>
    </message>
    <message>
        <source>工作状态</source>
        <translation>Trạng thái hoạt động</translation>
    </message>
</context>
<context>
    <name>DeviceManager</name>
    <message>
        <source>嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不便啦。希望快点搞定，加油哦！✌️</source>
        <translation>Chào bạn, có vẻ dải LED của bạn đang gặp chút trục trặc. Dải LED bị ngắt kết nối liên tục, có thể do không đủ điện. Bạn hãy thử cắm vào cổng USB trên bo mạch chủ hoặc bộ chia USB có nguồn riêng nhé. Nếu vẫn không được, hãy liên hệ bộ phận hậu mãi. Rất xin lỗi vì sự bất tiện này. Mong là sớm ổn, cố lên nhé! ✌️</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>%1：%2 已就绪</source>
        <translation>%1: %2 đã sẵn sàng</translation>
    </message>
    <message>
        <source>程序正在运行（%1）</source>
        <translation>Chương trình đang chạy (%1)</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>Âm thanh</translation>
    </message>
    <message>
        <source>桌面没有可以转交画面的门户。请安装 xdg-desktop-portal 及适合此桌面的组件。</source>
        <translation>Màn hình nền không có cổng để chuyển hình. Hãy cài xdg-desktop-portal và phần dành cho màn hình nền này.</translation>
    </message>
    <message>
        <source>可以直接读取</source>
        <translation>Có thể đọc trực tiếp</translation>
    </message>
    <message>
        <source>%1：由正在运行的 Lumivar 控制（%2）</source>
        <translation>%1: do Lumivar đang chạy điều khiển (%2)</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>Màn hình</translation>
    </message>
    <message>
        <source>由桌面转交，您已同意</source>
        <translation>Do màn hình nền chuyển, bạn đã đồng ý</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Thiết bị</translation>
    </message>
    <message>
        <source>没有显示器可用。请在桌面会话中运行。</source>
        <translation>Không có màn hình. Hãy chạy trong phiên màn hình nền.</translation>
    </message>
    <message>
        <source>没有安装 udev 规则，接口由用户组决定</source>
        <translation>Chưa cài quy tắc udev, nên do nhóm người dùng quyết định</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Quyền</translation>
    </message>
    <message>
        <source>程序没有在运行</source>
        <translation>Chương trình không chạy</translation>
    </message>
    <message>
        <source>由桌面转交，首次使用时会征求您的同意</source>
        <translation>Do màn hình nền chuyển, sẽ hỏi bạn ở lần dùng đầu</translation>
    </message>
    <message>
        <source>桌面的门户（xdg-desktop-portal）没有应答。请重新登录后再试。</source>
        <translation>Cổng của màn hình nền (xdg-desktop-portal) không trả lời. Hãy đăng nhập lại rồi thử lại.</translation>
    </message>
</context>
<context>
    <name>EffectNames</name>
    <message>
        <source>跑马灯模式</source>
        <translation>Đèn chạy</translation>
    </message>
    <message>
        <source>单色模式</source>
        <translation>Đơn sắc</translation>
    </message>
    <message>
        <source>流光异彩</source>
        <translation>Dòng màu sắc</translation>
    </message>
    <message>
        <source>影随心动</source>
        <translation>Theo cảm xúc</translation>
    </message>
    <message>
        <source>幻彩模式 3</source>
        <translation>Đa sắc 3</translation>
    </message>
    <message>
        <source>幻彩模式 4</source>
        <translation>Đa sắc 4</translation>
    </message>
    <message>
        <source>幻彩模式 5</source>
        <translation>Đa sắc 5</translation>
    </message>
    <message>
        <source>幻彩模式 6</source>
        <translation>Đa sắc 6</translation>
    </message>
    <message>
        <source>幻彩模式 7</source>
        <translation>Đa sắc 7</translation>
    </message>
    <message>
        <source>幻彩模式 8</source>
        <translation>Đa sắc 8</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>Toàn màn hình</translation>
    </message>
    <message>
        <source>半屏-上</source>
        <translation>Nửa trên</translation>
    </message>
    <message>
        <source>半屏-下</source>
        <translation>Nửa dưới</translation>
    </message>
    <message>
        <source>半屏-左</source>
        <translation>Nửa trái</translation>
    </message>
    <message>
        <source>半屏-右</source>
        <translation>Nửa phải</translation>
    </message>
    <message>
        <source>电影模式</source>
        <translation>Phim</translation>
    </message>
    <message>
        <source>音乐1</source>
        <translation>Âm nhạc 1</translation>
    </message>
    <message>
        <source>音乐2</source>
        <translation>Âm nhạc 2</translation>
    </message>
    <message>
        <source>音乐3</source>
        <translation>Âm nhạc 3</translation>
    </message>
    <message>
        <source>音乐4</source>
        <translation>Âm nhạc 4</translation>
    </message>
    <message>
        <source>音乐5</source>
        <translation>Âm nhạc 5</translation>
    </message>
    <message>
        <source>音乐6</source>
        <translation>Âm nhạc 6</translation>
    </message>
    <message>
        <source>音乐7</source>
        <translation>Âm nhạc 7</translation>
    </message>
    <message>
        <source>音乐8</source>
        <translation>Âm nhạc 8</translation>
    </message>
    <message>
        <source>图像模式</source>
        <translation>Hình ảnh</translation>
    </message>
    <message>
        <source>音乐模式1</source>
        <translation>Chế độ nhạc 1</translation>
    </message>
    <message>
        <source>音乐模式2</source>
        <translation>Chế độ nhạc 2</translation>
    </message>
    <message>
        <source>音乐模式3</source>
        <translation>Chế độ nhạc 3</translation>
    </message>
    <message>
        <source>音乐模式4</source>
        <translation>Chế độ nhạc 4</translation>
    </message>
    <message>
        <source>律动音柱</source>
        <translation>Cột âm lượng</translation>
    </message>
    <message>
        <source>影随乐动</source>
        <translation>Nhịp thở</translation>
    </message>
    <message>
        <source>声色渐变</source>
        <translation>Màu âm lượng</translation>
    </message>
    <message>
        <source>镜像频谱</source>
        <translation>Phổ đối xứng</translation>
    </message>
</context>
<context>
    <name>EffectNotice</name>
    <message>
        <source>没有可用的声音来源，灯带保持熄灭。请连接扬声器，或选择其他设备源。</source>
        <translation>Không có nguồn âm thanh nào nên dải LED vẫn tắt. Hãy kết nối loa hoặc chọn nguồn âm thanh khác.</translation>
    </message>
    <message>
        <source>屏幕画面或布局的大小不适合此效果。</source>
        <translation>Kích thước màn hình hoặc bố cục không phù hợp với hiệu ứng này.</translation>
    </message>
    <message>
        <source>所选的屏幕没有连接。</source>
        <translation>Màn hình đã chọn chưa được kết nối.</translation>
    </message>
    <message>
        <source>没有可以跟随的屏幕画面。</source>
        <translation>Không có hình ảnh màn hình nào để theo.</translation>
    </message>
    <message>
        <source>当前的效果不可用，请另选一种。</source>
        <translation>Hiệu ứng hiện tại không khả dụng. Hãy chọn hiệu ứng khác.</translation>
    </message>
    <message>
        <source>当前的工作模式不可用，请另选一种。</source>
        <translation>Chế độ làm việc hiện tại không khả dụng. Hãy chọn chế độ khác.</translation>
    </message>
    <message>
        <source>此桌面不提供屏幕画面。请安装 xdg-desktop-portal 及适合此桌面的后端，或在设置中更换场景捕获模式。</source>
        <translation>Màn hình nền này không cung cấp hình ảnh. Hãy cài xdg-desktop-portal cùng phần phụ trợ cho màn hình nền của bạn, hoặc đổi cách chụp màn hình trong cài đặt.</translation>
    </message>
    <message>
        <source>请求屏幕画面</source>
        <translation>Yêu cầu màn hình</translation>
    </message>
    <message>
        <source>没有可以读取的屏幕。请在图形桌面中启动程序，或在设置中更换场景捕获模式。</source>
        <translation>Không có màn hình nào để đọc. Hãy chạy chương trình trong môi trường đồ họa hoặc đổi cách chụp màn hình trong cài đặt.</translation>
    </message>
    <message>
        <source>屏幕画面已中断，恢复后会自动继续。</source>
        <translation>Hình ảnh màn hình bị gián đoạn. Khi có lại, đèn sẽ tự tiếp tục.</translation>
    </message>
    <message>
        <source>您没有同意共享屏幕，灯带无法跟随。</source>
        <translation>Màn hình chưa được chia sẻ nên dải đèn không thể theo.</translation>
    </message>
    <message>
        <source>跟随屏幕需要您的同意，桌面会询问您。</source>
        <translation>Cần bạn đồng ý để đèn theo màn hình. Màn hình nền sẽ hỏi bạn.</translation>
    </message>
    <message>
        <source>屏幕共享已结束，灯带不再跟随。</source>
        <translation>Đã ngừng chia sẻ màn hình nên dải đèn không theo nữa.</translation>
    </message>
    <message>
        <source>请在桌面的对话框中选择要跟随的屏幕。</source>
        <translation>Hãy chọn màn hình cần theo trong hộp thoại của màn hình nền.</translation>
    </message>
    <message>
        <source>已经有一会儿没有听到声音。请播放音乐，或选择正在播放的设备源。</source>
        <translation>Đã một lúc không nghe thấy âm thanh. Hãy phát nhạc hoặc chọn nguồn đang phát.</translation>
    </message>
    <message>
        <source>无法连接声音服务，灯带保持熄灭。请确认系统的声音服务（如 PipeWire）正在运行。</source>
        <translation>Không kết nối được dịch vụ âm thanh nên dải đèn tắt. Hãy kiểm tra dịch vụ âm thanh của hệ thống, như PipeWire, có đang chạy không.</translation>
    </message>
</context>
<context>
    <name>FeedbackErrand</name>
    <message>
        <source>报告已保存：</source>
        <translation>Đã lưu báo cáo:</translation>
    </message>
    <message>
        <source>反馈失败，原因：</source>
        <translation>Không gửi được phản hồi:</translation>
    </message>
    <message>
        <source>无法保存报告，原因：</source>
        <translation>Không lưu được báo cáo:</translation>
    </message>
    <message>
        <source>反馈成功</source>
        <translation>Đã gửi phản hồi</translation>
    </message>
</context>
<context>
    <name>FeedbackProgress</name>
    <message>
        <source>取消</source>
        <translation>Hủy</translation>
    </message>
    <message>
        <source>正在发送反馈...</source>
        <translation>Đang gửi phản hồi...</translation>
    </message>
    <message>
        <source>正在收集日志...</source>
        <translation>Đang thu thập nhật ký...</translation>
    </message>
</context>
<context>
    <name>FindingList</name>
    <message>
        <source>允许使用</source>
        <translation>Cho phép truy cập</translation>
    </message>
    <message>
        <source>已复制</source>
        <translation>Đã sao chép</translation>
    </message>
    <message>
        <source>用 USB 数据线把灯带接到电脑，它会自动出现在这里。</source>
        <translation>Hãy nối dải đèn với máy tính bằng cáp dữ liệu USB. Nó sẽ tự xuất hiện ở đây.</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Sao chép</translation>
    </message>
    <message>
        <source>未发现设备，请连接灯带</source>
        <translation>Không tìm thấy thiết bị. Hãy kết nối dải đèn.</translation>
    </message>
</context>
<context>
    <name>FindingTexts</name>
    <message>
        <source>正在识别接口 %1 上的设备</source>
        <translation>Đang nhận diện thiết bị ở cổng %1</translation>
    </message>
    <message>
        <source>%2 正在使用接口 %1</source>
        <translation>Cổng %1 đang được dùng: %2</translation>
    </message>
    <message>
        <source>请在终端中运行下面的命令，然后重新登录。</source>
        <translation>Hãy chạy các lệnh này trong terminal rồi đăng nhập lại.</translation>
    </message>
    <message>
        <source>接口 %1 上的型号 %2 尚不熟悉</source>
        <translation>Chưa biết mẫu ở cổng %1: %2</translation>
    </message>
    <message>
        <source>灯带适配器（%1）没有驱动程序</source>
        <translation>Bộ chuyển của dải đèn (%1) chưa có trình điều khiển</translation>
    </message>
    <message>
        <source>灯带可以使用，但灯珠数量和布局未知。请设置数量，或把 Lumivar 更新到最新版本。</source>
        <translation>Dải đèn dùng được, nhưng chưa biết số LED và cách bố trí. Hãy đặt số LED hoặc cập nhật Lumivar.</translation>
    </message>
    <message>
        <source>其他程序</source>
        <translation>Chương trình khác</translation>
    </message>
    <message>
        <source>没有得到授权。请再试一次，或在终端中运行下面的命令，然后重新登录。</source>
        <translation>Chưa được cho phép. Hãy thử lại, hoặc chạy các lệnh này trong terminal rồi đăng nhập lại.</translation>
    </message>
    <message>
        <source>系统一直没有应答。也可以在终端中运行下面的命令，然后重新登录。</source>
        <translation>Hệ thống chưa trả lời. Bạn cũng có thể chạy các lệnh này trong terminal rồi đăng nhập lại.</translation>
    </message>
    <message>
        <source>%2 占用了灯带适配器（%1）</source>
        <translation>Bộ chuyển của dải đèn (%1) đang bị chiếm: %2</translation>
    </message>
    <message>
        <source>请在系统的对话框中确认。</source>
        <translation>Vui lòng xác nhận trong hộp thoại của hệ thống.</translation>
    </message>
    <message>
        <source>接口 %1 上的设备无法识别（%2）</source>
        <translation>Không nhận ra thiết bị ở cổng %1 (%2)</translation>
    </message>
    <message>
        <source>请停用该程序，然后重新插拔灯带。盲文服务 brltty 常会这样，不需要时可以卸载。</source>
        <translation>Hãy dừng chương trình đó rồi rút dải đèn ra cắm lại. Thường là dịch vụ chữ nổi brltty. Gỡ nó nếu không ai cần.</translation>
    </message>
    <message>
        <source>%1。%2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>接口 %1 上的设备没有应答</source>
        <translation>Thiết bị ở cổng %1 không trả lời</translation>
    </message>
    <message>
        <source>权限已设置。如果灯带没有亮起，请重新插拔；仍不行时，运行下面的命令并重新登录。</source>
        <translation>Đã cấp quyền. Nếu dải đèn chưa sáng, hãy rút ra cắm lại. Nếu vẫn không được, chạy các lệnh này trong terminal rồi đăng nhập lại.</translation>
    </message>
    <message>
        <source>它可能不是灯带。如果是，请重新插拔，并把 Lumivar 更新到最新版本。</source>
        <translation>Có thể đó không phải dải đèn. Nếu phải, hãy rút ra cắm lại và cập nhật Lumivar.</translation>
    </message>
    <message>
        <source>允许这台电脑的用户使用灯带。系统会要求管理员确认一次。</source>
        <translation>Cho phép người dùng máy tính này dùng dải đèn. Hệ thống sẽ hỏi quản trị viên một lần.</translation>
    </message>
    <message>
        <source>请安装或加载它的驱动程序 ch341，然后重新插拔。</source>
        <translation>Hãy cài hoặc nạp trình điều khiển ch341, rồi rút dải đèn ra cắm lại.</translation>
    </message>
    <message>
        <source>请稍候片刻。</source>
        <translation>Vui lòng chờ giây lát.</translation>
    </message>
    <message>
        <source>请退出该程序，灯带随后会自动连接。</source>
        <translation>Hãy thoát chương trình đó. Dải đèn sẽ tự kết nối.</translation>
    </message>
    <message>
        <source>请重新插拔灯带，或更换数据线和 USB 插口。如果它不是灯带，则无需理会。</source>
        <translation>Hãy rút dải đèn ra cắm lại, hoặc thử cáp và cổng USB khác. Nếu đó không phải dải đèn thì không cần làm gì.</translation>
    </message>
    <message>
        <source>没有权限打开接口 %1</source>
        <translation>Không có quyền mở cổng %1</translation>
    </message>
</context>
<context>
    <name>FrmSingleColor</name>
    <message>
        <source>选择颜色</source>
        <translation>Chọn màu</translation>
    </message>
    <message>
        <source>色轮</source>
        <translation>Vòng màu</translation>
    </message>
    <message>
        <source>方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相</source>
        <translation>Phím mũi tên đổi độ bão hòa và độ sáng, Page Up và Page Down đổi sắc độ</translation>
    </message>
</context>
<context>
    <name>GradientHandler</name>
    <message>
        <source>两端颜色 %1</source>
        <translation>Màu hai đầu %1</translation>
    </message>
    <message>
        <source>颜色 %1，位置 %2%</source>
        <translation>Màu %1, vị trí %2%</translation>
    </message>
    <message>
        <source>拖动可移动，双击可修改颜色，右键可删除</source>
        <translation>Kéo để di chuyển, nhấp đúp để đổi màu, nhấp chuột phải để xóa</translation>
    </message>
    <message>
        <source>双击可修改两端的颜色</source>
        <translation>Nhấp đúp để đổi màu hai đầu</translation>
    </message>
    <message>
        <source>修改</source>
        <translation>Thay đổi</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Xóa</translation>
    </message>
</context>
<context>
    <name>GradientWidget</name>
    <message>
        <source>选择颜色</source>
        <translation>Chọn màu</translation>
    </message>
    <message>
        <source>单击可添加颜色</source>
        <translation>Nhấp để thêm màu</translation>
    </message>
    <message>
        <source>Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除</source>
        <translation>Tab để chuyển màu, phím mũi tên để di chuyển, Enter để thay đổi, Insert để thêm, Delete để xóa</translation>
    </message>
</context>
<context>
    <name>GroupInformation</name>
    <message>
        <source>单色模式</source>
        <translation>Đơn sắc</translation>
    </message>
    <message>
        <source>设置灯带颜色</source>
        <translation>Đặt màu cho dải LED</translation>
    </message>
    <message>
        <source>幻彩模式</source>
        <translation>Đa sắc</translation>
    </message>
    <message>
        <source>同屏模式</source>
        <translation>Đồng bộ màn hình</translation>
    </message>
    <message>
        <source>音乐模式</source>
        <translation>Âm nhạc</translation>
    </message>
    <message>
        <source>让音乐动起来！</source>
        <translation>Hãy để âm nhạc chuyển động!</translation>
    </message>
    <message>
        <source>图形模式</source>
        <translation>Đồ họa</translation>
    </message>
    <message>
        <source>跑马灯模式</source>
        <translation>Đèn chạy</translation>
    </message>
</context>
<context>
    <name>HelpDialog</name>
    <message>
        <source>附带日志，以便我们了解程序的故障原因。</source>
        <translation>Nhật ký được gửi kèm để chúng tôi tìm ra nguyên nhân lỗi.</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>Đã là phiên bản mới nhất</translation>
    </message>
    <message>
        <source>最新版本号：</source>
        <translation>Phiên bản mới nhất:</translation>
    </message>
    <message>
        <source>版本信息;问题反馈;联系我们</source>
        <translation>Phiên bản;Phản hồi;Liên hệ</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Trợ giúp</translation>
    </message>
    <message>
        <source>您的联系方式</source>
        <translation>Thông tin liên hệ của bạn</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>当前版本号：</source>
        <translation>Phiên bản hiện tại:</translation>
    </message>
    <message>
        <source>版本信息;问题反馈</source>
        <translation>Phiên bản;Phản hồi</translation>
    </message>
    <message>
        <source>包含日志、版本号和设置，其中的个人信息会被去除。</source>
        <translation>Gồm nhật ký, số phiên bản và các cài đặt. Thông tin cá nhân được loại bỏ.</translation>
    </message>
    <message>
        <source>发送反馈</source>
        <translation>Gửi phản hồi</translation>
    </message>
    <message>
        <source>只发送程序启动和停止的时间及其版本号，不发送其他任何内容。</source>
        <translation>Chỉ gửi thời điểm chương trình khởi động và kết thúc cùng phiên bản của nó, không gửi gì khác.</translation>
    </message>
    <message>
        <source>发送使用情况</source>
        <translation>Gửi thông tin sử dụng</translation>
    </message>
    <message>
        <source>点击更新</source>
        <translation>Cập nhật</translation>
    </message>
    <message>
        <source>请写下您的建议或遇到的问题</source>
        <translation>Hãy viết góp ý hoặc vấn đề bạn gặp phải</translation>
    </message>
    <message>
        <source>保存报告...</source>
        <translation>Lưu báo cáo...</translation>
    </message>
</context>
<context>
    <name>HomePage</name>
    <message>
        <source>灯光设备</source>
        <translation>Thiết bị chiếu sáng</translation>
    </message>
    <message>
        <source>更多产品</source>
        <translation>Sản phẩm khác</translation>
    </message>
    <message>
        <source>灯带配置</source>
        <translation>Cấu hình dải LED</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Tên thiết bị</translation>
    </message>
</context>
<context>
    <name>HotKeyEditDialog</name>
    <message>
        <source>按键</source>
        <translation>Phím</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Xác nhận</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Hủy</translation>
    </message>
    <message>
        <source>在框中按下想用的键。Tab 键离开此框，Esc 键取消。</source>
        <translation>Nhấn phím bạn muốn trong ô. Tab rời khỏi ô, Esc hủy.</translation>
    </message>
    <message>
        <source>修改快捷键</source>
        <translation>Đổi phím tắt</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>这个组合不能用：已被占用，或键盘上没有这个键。</source>
        <translation>Không dùng được tổ hợp này: đã bị chiếm, hoặc bàn phím không có phím này.</translation>
    </message>
</context>
<context>
    <name>HotKeyEditWidget</name>
    <message>
        <source>这个快捷键已被其他程序占用，释放后会自动生效。</source>
        <translation>Chương trình khác đang dùng phím tắt này. Nó sẽ hoạt động ngay khi được nhả ra.</translation>
    </message>
    <message>
        <source>当前键盘上没有这个键。</source>
        <translation>Bàn phím hiện tại không có phím này.</translation>
    </message>
    <message>
        <source>修改快捷键...</source>
        <translation>Đổi phím tắt...</translation>
    </message>
    <message>
        <source>当前桌面不允许程序占用按键，快捷键暂时不起作用。</source>
        <translation>Màn hình nền này không cho chương trình chiếm phím, nên phím tắt không hoạt động ở đây.</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Phím tắt</translation>
    </message>
    <message>
        <source>功能</source>
        <translation>Chức năng</translation>
    </message>
    <message>
        <source>桌面还没有给它分配按键，请在系统的键盘设置中分配。</source>
        <translation>Màn hình nền chưa gán phím cho nó. Hãy gán trong phần cài đặt bàn phím của hệ thống.</translation>
    </message>
    <message>
        <source>%1（由桌面设定）</source>
        <translation>%1 (do màn hình nền đặt)</translation>
    </message>
    <message>
        <source>桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。</source>
        <translation>Các phím tắt chưa được cho phép khi màn hình nền hỏi. Hãy sửa một phím tắt, nó sẽ hỏi lại.</translation>
    </message>
</context>
<context>
    <name>HotkeyDescription</name>
    <message>
        <source>切换到下一个模式</source>
        <translation>Chuyển sang chế độ tiếp theo</translation>
    </message>
    <message>
        <source>切换到上一个模式</source>
        <translation>Chuyển về chế độ trước</translation>
    </message>
    <message>
        <source>降低亮度</source>
        <translation>Giảm độ sáng</translation>
    </message>
    <message>
        <source>提升亮度</source>
        <translation>Tăng độ sáng</translation>
    </message>
    <message>
        <source>全开全关切换</source>
        <translation>Bật hoặc tắt tất cả</translation>
    </message>
</context>
<context>
    <name>LVSysTray</name>
    <message>
        <source>所有设备</source>
        <translation>Tất cả thiết bị</translation>
    </message>
</context>
<context>
    <name>LumivarApp</name>
    <message>
        <source>设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。</source>
        <translation>Hiện không thể lưu cài đặt. Hãy kiểm tra dung lượng đĩa trống và quyền ghi vào thư mục cài đặt. Cài đặt sẽ được lưu ngay khi có thể.</translation>
    </message>
    <message>
        <source>无法打开安装包：</source>
        <translation>Không mở được bộ cài đặt:</translation>
    </message>
    <message>
        <source>为保护电源，亮度已被限制。</source>
        <translation>Độ sáng đang được giới hạn để bảo vệ nguồn điện.</translation>
    </message>
</context>
<context>
    <name>MMSOptWidget</name>
    <message>
        <source>强度：</source>
        <translation>Cường độ:</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>new</source>
        <translation>mới</translation>
    </message>
    <message>
        <source>首页</source>
        <translation>Trang chủ</translation>
    </message>
    <message>
        <source>Alt+H</source>
        <translation>Alt+H</translation>
    </message>
    <message>
        <source>全开</source>
        <translation>Bật tất cả</translation>
    </message>
    <message>
        <source>Alt+O</source>
        <translation>Alt+O</translation>
    </message>
    <message>
        <source>全关</source>
        <translation>Tắt tất cả</translation>
    </message>
    <message>
        <source>Alt+N</source>
        <translation>Alt+N</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Cài đặt</translation>
    </message>
    <message>
        <source>Alt+S</source>
        <translation>Alt+S</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Trợ giúp</translation>
    </message>
    <message>
        <source>Alt+E</source>
        <translation>Alt+E</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Thu nhỏ</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Thoát</translation>
    </message>
    <message>
        <source>检测到新版本，是否下载最新安装包？</source>
        <translation>Đã có phiên bản mới. Bạn có muốn tải gói cài đặt mới nhất không?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Có</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Không</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>Hủy tải xuống</translation>
    </message>
    <message>
        <source>正在下载最新安装包</source>
        <translation>Đang tải gói cài đặt mới nhất</translation>
    </message>
</context>
<context>
    <name>MediaSourceOptWidget</name>
    <message>
        <source>设备源：</source>
        <translation>Nguồn âm thanh:</translation>
    </message>
</context>
<context>
    <name>MoodShadow</name>
    <message>
        <source>选择颜色</source>
        <translation>Chọn màu</translation>
    </message>
</context>
<context>
    <name>NetRCManager</name>
    <message>
        <source>下载未完成，请检查网络后重试</source>
        <translation>Chưa tải xuống xong. Vui lòng kiểm tra mạng rồi thử lại.</translation>
    </message>
    <message>
        <source>无法保存下载的文件，请检查磁盘空间</source>
        <translation>Không thể lưu tệp đã tải xuống. Vui lòng kiểm tra dung lượng đĩa.</translation>
    </message>
    <message>
        <source>下载的文件不正确，已将其删除</source>
        <translation>Tệp đã tải xuống không đúng nên đã bị xóa.</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Chọn tất cả</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Tăng</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>&amp;Giảm</translation>
    </message>
</context>
<context>
    <name>QColorDialog</name>
    <message>
        <source>&amp;Basic colors</source>
        <translation>Màu &amp;cơ bản</translation>
    </message>
    <message>
        <source>&amp;Pick Screen Color</source>
        <translation>Lấy màu từ &amp;màn hình</translation>
    </message>
    <message>
        <source>Cursor at %1, %2
Press ESC to cancel</source>
        <translation>Con trỏ tại %1, %2
Nhấn ESC để hủy</translation>
    </message>
    <message>
        <source>&amp;Custom colors</source>
        <translation>Màu tù&amp;y chỉnh</translation>
    </message>
    <message>
        <source>&amp;Add to Custom Colors</source>
        <translation>&amp;Thêm vào màu tùy chỉnh</translation>
    </message>
    <message>
        <source>Hu&amp;e:</source>
        <translation>&amp;Sắc độ:</translation>
    </message>
    <message>
        <source>&amp;Sat:</source>
        <translation>Độ &amp;bão hòa:</translation>
    </message>
    <message>
        <source>&amp;Val:</source>
        <translation>Độ sá&amp;ng:</translation>
    </message>
    <message>
        <source>&amp;Red:</source>
        <translation>&amp;Đỏ:</translation>
    </message>
    <message>
        <source>&amp;Green:</source>
        <translation>&amp;Xanh lục:</translation>
    </message>
    <message>
        <source>Bl&amp;ue:</source>
        <translation>X&amp;anh lam:</translation>
    </message>
    <message>
        <source>A&amp;lpha channel:</source>
        <translation>Kênh a&amp;lpha:</translation>
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
        <translation>Tìm trong:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Quay lại</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Tiếp</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Thư mục cha</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Tạo thư mục mới</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Dạng danh sách</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Dạng chi tiết</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Loại tệp:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>Tê&amp;n tệp:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Lưu</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>Đổ&amp;i tên</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Xóa</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>&amp;Hiện tệp ẩn</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>Thư mục &amp;mới</translation>
    </message>
    <message>
        <source>New Folder</source>
        <translation>Thư mục mới</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 đã tồn tại.
Bạn có muốn thay thế không?</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Thư mục</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>Tên</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Kích cỡ</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>All other platforms</comment>
        <translation>Loại</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Ngày sửa đổi</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Máy tính</translation>
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
        <translation>&amp;Hủy</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>Đón&amp;g</translation>
    </message>
</context>
<context>
    <name>QHotkey</name>
    <message>
        <source>Failed to register %1. Error: %2</source>
        <translation>Không thể đăng ký %1. Lỗi: %2</translation>
    </message>
    <message>
        <source>Failed to unregister %1. Error: %2</source>
        <translation>Không thể hủy đăng ký %1. Lỗi: %2</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Hoàn tác</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Làm lại</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cắ&amp;t</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Sao chép</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Dán</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Xóa</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Chọn tất cả</translation>
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
        <translation>Hủy</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Có</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Không</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>Cuộn đến đây</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Mép trái</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Đầu trang</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Mép phải</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Cuối trang</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>Trang bên trái</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Trang lên</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>Trang bên phải</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Trang xuống</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Cuộn sang trái</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Cuộn lên</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Cuộn sang phải</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Cuộn xuống</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Hoàn tác</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Làm lại</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cắ&amp;t</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Sao chép</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>Sao chép địa chỉ l&amp;iên kết</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Dán</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Xóa</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Chọn tất cả</translation>
    </message>
</context>
<context>
    <name>QuitAskDialog</name>
    <message>
        <source>关闭</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>你点击了关闭按钮，你希望？</source>
        <translation>Bạn đã nhấn nút đóng. Bạn muốn làm gì?</translation>
    </message>
    <message>
        <source>记住我的选择</source>
        <translation>Ghi nhớ lựa chọn của tôi</translation>
    </message>
    <message>
        <source>退出程序</source>
        <translation>Thoát chương trình</translation>
    </message>
    <message>
        <source>最小化到托盘</source>
        <translation>Thu nhỏ xuống khay</translation>
    </message>
</context>
<context>
    <name>SFrmColorMap</name>
    <message>
        <source>速度：</source>
        <translation>Tốc độ:</translation>
    </message>
</context>
<context>
    <name>SFrmMoodShadow</name>
    <message>
        <source>速度</source>
        <translation>Tốc độ</translation>
    </message>
    <message>
        <source>删除当前渐变</source>
        <translation>Xóa dải màu này</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Thêm</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Phạm vi</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Xóa</translation>
    </message>
    <message>
        <source>添加新的渐变</source>
        <translation>Thêm dải màu mới</translation>
    </message>
    <message>
        <source>渐变</source>
        <translation>Dải màu</translation>
    </message>
</context>
<context>
    <name>SFrmPixmapStream</name>
    <message>
        <source>没有可选的动画</source>
        <translation>Không có hoạt ảnh để chọn</translation>
    </message>
    <message>
        <source>动画</source>
        <translation>Hoạt ảnh</translation>
    </message>
</context>
<context>
    <name>SSLOptWidget</name>
    <message>
        <source>宽度：</source>
        <translation>Rộng:</translation>
    </message>
    <message>
        <source>高度：</source>
        <translation>Cao:</translation>
    </message>
    <message>
        <source>把方块拖到LED所在的位置；框选可移动多个，滚轮缩放，右键平移。</source>
        <translation>Kéo từng ô đến vị trí của đèn LED. Vẽ khung để chọn nhiều ô. Con lăn: thu phóng, nút phải: di chuyển khung nhìn.</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Đặt lại</translation>
    </message>
    <message>
        <source>Page Up 和 Page Down 键选择LED，方向键移动，Ctrl+A 全选</source>
        <translation>Page Up và Page Down để chọn LED, phím mũi tên để di chuyển, Ctrl+A để chọn tất cả</translation>
    </message>
    <message>
        <source>LED布局</source>
        <translation>Bố cục LED</translation>
    </message>
</context>
<context>
    <name>ScreenCastSession</name>
    <message>
        <source>屏幕 %1</source>
        <translation>Màn hình %1</translation>
    </message>
</context>
<context>
    <name>ScreenSyncSOptWidget</name>
    <message>
        <source>视频源</source>
        <translation>Nguồn hình ảnh</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>Độ bão hòa</translation>
    </message>
    <message>
        <source>取色范围</source>
        <translation>Phạm vi lấy màu</translation>
    </message>
    <message>
        <source>自动去黑边</source>
        <translation>Tự động bỏ viền đen</translation>
    </message>
    <message>
        <source>黑边识别</source>
        <translation>Viền đen</translation>
    </message>
    <message>
        <source>平滑</source>
        <translation>Làm mượt</translation>
    </message>
    <message>
        <source>灰色保护</source>
        <translation>Bảo vệ màu xám</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Tốc độ khung</translation>
    </message>
    <message>
        <source>稳定</source>
        <translation>Ổn định</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Cổ điển</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Tắt</translation>
    </message>
    <message>
        <source>灵敏</source>
        <translation>Nhanh nhạy</translation>
    </message>
    <message>
        <source>平缓</source>
        <translation>Êm dịu</translation>
    </message>
    <message>
        <source>如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。经典：逐帧判断，适合需要立即去掉黑边时。</source>
        <translation>Cách nhận biết viền đen. Ổn định: chỉ bỏ viền khi nó đen liên tục, không bị phụ đề, mờ dần hay chớp sáng làm nhầm. Cổ điển: xét riêng từng khung hình, dùng khi muốn bỏ viền ngay.</translation>
    </message>
    <message>
        <source>让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，适合灯光太跳时。关：每一帧都原样显示。</source>
        <translation>Làm màu thay đổi mềm mại hơn. Nhanh nhạy: giảm nhấp nháy và theo ngay các thay đổi lớn. Êm dịu: mọi thay đổi đều chậm rãi, dùng khi ánh sáng quá xáo động. Tắt: mỗi khung hình hiện nguyên như vậy.</translation>
    </message>
    <message>
        <source>避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，浅色显得发灰时调小，最小为关闭。</source>
        <translation>Giữ cho những phần gần như xám không biến thành màu rực. Tăng lên nếu đèn nhảy màu trong cảnh xám hoặc tối, giảm xuống nếu màu nhạt trông xám. Ở mức thấp nhất là tắt.</translation>
    </message>
    <message>
        <source>每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。</source>
        <translation>Số lần đọc màn hình mỗi giây. Tự động: nhiều nhất mà dải LED nhận được. Giảm xuống để nhẹ bớt cho bộ xử lý.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Tự động</translation>
    </message>
    <message>
        <source>每秒 %1 次</source>
        <translation>%1 lần mỗi giây</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>语言</source>
        <translation>Ngôn ngữ</translation>
    </message>
    <message>
        <source>清理配置文件需要重启应用程序, 这个操作将退出Lumivar.</source>
        <translation>Để xóa các tệp cấu hình cần khởi động lại ứng dụng. Lumivar sẽ thoát.</translation>
    </message>
    <message>
        <source>同屏模式高阶选项</source>
        <translation>Tùy chọn nâng cao của đồng bộ màn hình</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Cài đặt</translation>
    </message>
    <message>
        <source>设置灯光gama值，注意这会影响所有灯带设备。</source>
        <translation>Giá trị gamma của ánh sáng. Áp dụng cho mọi dải LED.</translation>
    </message>
    <message>
        <source>是否控制所有设备</source>
        <translation>Điều khiển tất cả thiết bị</translation>
    </message>
    <message>
        <source>界面立即使用所选的语言。</source>
        <translation>Giao diện dùng ngay ngôn ngữ đã chọn.</translation>
    </message>
    <message>
        <source>登录系统后自动在后台启动。</source>
        <translation>Khởi động ở chế độ nền khi bạn đăng nhập.</translation>
    </message>
    <message>
        <source>打开用户配置目录</source>
        <translation>Mở thư mục cấu hình</translation>
    </message>
    <message>
        <source>间断性保存屏幕捕获器中抓取的快照。</source>
        <translation>Thỉnh thoảng lưu một ảnh của màn hình được chụp.</translation>
    </message>
    <message>
        <source>读取屏幕画面的方式。画面不正常时可以换一种。</source>
        <translation>Cách đọc màn hình. Hãy thử cách khác nếu hình ảnh không đúng.</translation>
    </message>
    <message>
        <source>屏幕快照</source>
        <translation>Ảnh chụp màn hình</translation>
    </message>
    <message>
        <source>全屏模式编辑器</source>
        <translation>Trình chỉnh sửa chế độ toàn màn hình</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Không</translation>
    </message>
    <message>
        <source>数值越小灯光越亮，越大灯光越暗，1.00为原样。</source>
        <translation>Giá trị nhỏ sáng hơn, giá trị lớn tối hơn. 1.00 giữ nguyên ánh sáng.</translation>
    </message>
    <message>
        <source>最小化到托盘而不是退出程序</source>
        <translation>Thu nhỏ xuống khay thay vì thoát chương trình</translation>
    </message>
    <message>
        <source>场景捕获模式</source>
        <translation>Cách chụp màn hình</translation>
    </message>
    <message>
        <source>通用设置</source>
        <translation>Chung</translation>
    </message>
    <message>
        <source>选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。</source>
        <translation>Khi được chọn, nút của bất kỳ thiết bị nào cũng tác động lên tất cả, nếu không thì chỉ lên chính nó.</translation>
    </message>
    <message>
        <source>端口数据摘要日志</source>
        <translation>Nhật ký tóm tắt dữ liệu cổng</translation>
    </message>
    <message>
        <source>切换下一个工作模式</source>
        <translation>Chế độ tiếp theo</translation>
    </message>
    <message>
        <source>保存端口数据的部分内容到日志。</source>
        <translation>Lưu một phần dữ liệu cổng vào nhật ký.</translation>
    </message>
    <message>
        <source>启用高阶模式</source>
        <translation>Bật chế độ nâng cao</translation>
    </message>
    <message>
        <source>选中后，关闭主窗口时灯光继续工作，程序留在托盘中。</source>
        <translation>Khi được chọn, đóng cửa sổ chính thì đèn vẫn hoạt động và chương trình ở lại khay.</translation>
    </message>
    <message>
        <source>恢复默认设置</source>
        <translation>Khôi phục cài đặt mặc định</translation>
    </message>
    <message>
        <source>主界面按钮行为</source>
        <translation>Nút của cửa sổ chính</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置</source>
        <translation>Chung;Phím tắt</translation>
    </message>
    <message>
        <source>选中开启全屏模式的编辑器，允许用户编辑每个LED灯珠的采样位置。</source>
        <translation>Bật trình chỉnh sửa chế độ toàn màn hình, nơi có thể sửa vị trí lấy mẫu của từng LED.</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Có</translation>
    </message>
    <message>
        <source>开关灯</source>
        <translation>Bật/tắt đèn</translation>
    </message>
    <message>
        <source>通用设置;快捷键设置;高级设置</source>
        <translation>Chung;Phím tắt;Nâng cao</translation>
    </message>
    <message>
        <source>高级设置</source>
        <translation>Nâng cao</translation>
    </message>
    <message>
        <source>模式 %1</source>
        <translation>Cách %1</translation>
    </message>
    <message>
        <source>您的设置已经保存，请重新启动软件</source>
        <translation>Cài đặt đã được lưu. Vui lòng khởi động lại chương trình.</translation>
    </message>
    <message>
        <source>按下设备上的按钮时执行的操作。</source>
        <translation>Việc được thực hiện khi nhấn nút trên thiết bị.</translation>
    </message>
    <message>
        <source>删除所有设置，下次启动时生效。执行前会先询问。</source>
        <translation>Xóa mọi cài đặt ở lần khởi động sau. Bạn sẽ được hỏi trước.</translation>
    </message>
    <message>
        <source>开机时自动启动</source>
        <translation>Tự khởi động cùng hệ thống</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>物理按钮选项</source>
        <translation>Nút trên thiết bị</translation>
    </message>
    <message>
        <source>显示同屏模式的更多选项，部分在重新启动后生效。</source>
        <translation>Hiện thêm tùy chọn của đồng bộ màn hình, một số sau khi khởi động lại.</translation>
    </message>
    <message>
        <source>保存设置和日志的文件夹。</source>
        <translation>Thư mục chứa cài đặt và nhật ký.</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。</source>
        <translation>Đèn tắt trong lúc màn hình bị khóa hoặc tắt, và sáng lại cùng màn hình.</translation>
    </message>
    <message>
        <source>锁屏时关闭灯光</source>
        <translation>Tắt đèn khi màn hình bị khóa</translation>
    </message>
</context>
<context>
    <name>WallColorDialog</name>
    <message>
        <source>墙面颜色;亮度与电源</source>
        <translation>Màu tường;Độ sáng và nguồn</translation>
    </message>
    <message>
        <source>每颗灯珠全白时的电流</source>
        <translation>Dòng điện của một LED khi trắng tối đa</translation>
    </message>
    <message>
        <source>白墙或灰墙</source>
        <translation>Tường trắng hoặc xám</translation>
    </message>
    <message>
        <source>自然</source>
        <translation>Tự nhiên</translation>
    </message>
    <message>
        <source>最低亮度</source>
        <translation>Độ sáng tối thiểu</translation>
    </message>
    <message>
        <source>灯带的白色</source>
        <translation>Màu trắng của dải</translation>
    </message>
    <message>
        <source>经典</source>
        <translation>Cổ điển</translation>
    </message>
    <message>
        <source>在灯带上显示白色</source>
        <translation>Hiện màu trắng trên dải đèn</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Xanh lục</translation>
    </message>
    <message>
        <source>最暗的灯珠也不会低于这个亮度，色调不变。0 为不限制。</source>
        <translation>Không LED nào tối hơn mức này, sắc màu giữ nguyên. 0 là tắt.</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Tùy chỉnh</translation>
    </message>
    <message>
        <source>墙面颜色</source>
        <translation>Màu tường</translation>
    </message>
    <message>
        <source>墙面</source>
        <translation>Tường</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Xanh lam</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>Nguồn điện</translation>
    </message>
    <message>
        <source>限制总电流</source>
        <translation>Giới hạn tổng dòng điện</translation>
    </message>
    <message>
        <source>%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。</source>
        <translation>%1 LED cần khoảng %2 khi trắng tối đa. Đừng đặt quá mức định mức của nguồn.</translation>
    </message>
    <message>
        <source>浅绿墙</source>
        <translation>Tường xanh lục nhạt</translation>
    </message>
    <message>
        <source>浅蓝墙</source>
        <translation>Tường xanh lam nhạt</translation>
    </message>
    <message>
        <source>让灯带显示白色，再调到墙面看起来也是白色。</source>
        <translation>Khi dải đèn hiện màu trắng, chỉnh đến khi tường cũng trông trắng.</translation>
    </message>
    <message>
        <source>米色墙</source>
        <translation>Tường màu kem</translation>
    </message>
    <message>
        <source>木墙</source>
        <translation>Tường gỗ</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>恢复默认</source>
        <translation>Khôi phục mặc định</translation>
    </message>
    <message>
        <source>调光方式</source>
        <translation>Cách giảm sáng</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Đỏ</translation>
    </message>
    <message>
        <source>灯已关闭，打开后才能在墙上看到效果。</source>
        <translation>Đèn đang tắt. Hãy bật lên để thấy kết quả trên tường.</translation>
    </message>
    <message>
        <source>自然：暗处层次更多，更接近人眼。经典：与以前的版本相同。</source>
        <translation>Tự nhiên giữ nhiều sắc độ hơn ở vùng tối, gần với cảm nhận của mắt. Cổ điển như các phiên bản trước.</translation>
    </message>
</context>
</TS>
