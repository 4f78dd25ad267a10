<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Core::Plugin::CPluginManager</name>
    <message>
        <source>unknown error</source>
        <translation>未知错误</translation>
    </message>
    <message>
        <source>The plugin folder &quot;%1&quot; cannot be read.</source>
        <translation>无法读取插件文件夹“%1”。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; was not started, because the plugin &quot;%2&quot; that it needs failed.</source>
        <translation>插件“%1”未启动，因为它所需的插件“%2”失败了。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: %2.</source>
        <translation>无法加载插件“%1”：%2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: its instance is not a plugin.</source>
        <translation>无法加载插件“%1”：其实例不是插件。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized.</source>
        <translation>无法初始化插件“%1”。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized: %2.</source>
        <translation>无法初始化插件“%1”：%2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start.</source>
        <translation>插件“%1”未能完成启动。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start: %2.</source>
        <translation>插件“%1”未能完成启动：%2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; failed while stopping: %2.</source>
        <translation>插件“%1”在停止时失败：%2。</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginMetadata</name>
    <message>
        <source>The plugin file &quot;%1&quot; does not exist.</source>
        <translation>插件文件“%1”不存在。</translation>
    </message>
    <message>
        <source>it has no plugin metadata</source>
        <translation>它没有插件元数据</translation>
    </message>
    <message>
        <source>its interface identifier is &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation>其接口标识符是“%1”而不是“%2”</translation>
    </message>
    <message>
        <source>its metadata has no object &quot;MetaData&quot;</source>
        <translation>其元数据中没有对象“MetaData”</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not true or false</source>
        <translation>其元数据的条目“%1”不是真假值</translation>
    </message>
    <message>
        <source>its metadata has no name</source>
        <translation>其元数据中没有名称</translation>
    </message>
    <message>
        <source>its compatible version %1 is newer than its version %2</source>
        <translation>其兼容版本 %1 比版本 %2 更新</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a list</source>
        <translation>其元数据的条目“%1”不是列表</translation>
    </message>
    <message>
        <source>dependency number %1 of its metadata has no name</source>
        <translation>其元数据中的第 %1 个依赖项没有名称</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a text</source>
        <translation>其元数据的条目“%1”不是文本</translation>
    </message>
    <message>
        <source>its metadata has no entry &quot;%1&quot;</source>
        <translation>其元数据中没有条目“%1”</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata, &quot;%2&quot;, is not a version</source>
        <translation>其元数据的条目“%1”的值“%2”不是版本</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not a plugin that can be used: %2.</source>
        <translation>文件“%1”不是可用的插件：%2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3.</source>
        <translation>插件“%1”（%2）无法使用：%3。</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginResolver</name>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3 has the same name.</source>
        <translation>插件“%1”（%2）无法使用：%3 具有相同的名称。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, which is missing.</source>
        <translation>插件“%1”需要版本 %3 的插件“%2”，但它不存在。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, but that one has version %4, compatible down to %5.</source>
        <translation>插件“%1”需要版本 %3 的插件“%2”，但后者的版本是 %4，最低兼容到 %5。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot;, which cannot be used.</source>
        <translation>插件“%1”需要插件“%2”，但后者无法使用。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; depends on itself: %2.</source>
        <translation>插件“%1”依赖于自身：%2。</translation>
    </message>
</context>
<context>
    <name>HostKit</name>
    <message>
        <source>There is no camera called &quot;%1&quot;.</source>
        <translation>没有名为“%1”的相机。</translation>
    </message>
    <message>
        <source>Several cameras are called &quot;%1&quot;: %2.</source>
        <translation>有多台相机名为“%1”：%2。</translation>
    </message>
    <message>
        <source>No plugin offers the service %1.</source>
        <translation>没有插件提供服务 %1。</translation>
    </message>
    <message>
        <source>The pixel format 0x%1 cannot be shown.</source>
        <translation>无法显示像素格式 0x%1。</translation>
    </message>
    <message>
        <source>An image of %1 x %2 pixels cannot be shown.</source>
        <translation>无法显示 %1 x %2 像素的图像。</translation>
    </message>
    <message>
        <source>The image holds %1 bytes where its %2 x %3 pixels of %4 need %5.</source>
        <translation>图像只有 %1 字节，而 %4 的 %2 x %3 像素需要 %5 字节。</translation>
    </message>
    <message>
        <source>There is no image.</source>
        <translation>没有图像。</translation>
    </message>
    <message>
        <source>There is no interface called &quot;%1&quot;.</source>
        <translation>没有名为“%1”的接口。</translation>
    </message>
    <message>
        <source>Several interfaces are called &quot;%1&quot;: %2.</source>
        <translation>有多个名为“%1”的接口：%2。</translation>
    </message>
    <message>
        <source>The image is compressed, and the camera did not tell how.</source>
        <translation>图像已压缩，但相机未告知压缩方式。</translation>
    </message>
    <message>
        <source>The camera could not make the image as small as it was told to.</source>
        <translation>相机无法将图像压缩到指定的大小。</translation>
    </message>
    <message>
        <source>Bytes are missing at the end of the compressed image.</source>
        <translation>压缩图像末尾缺少字节。</translation>
    </message>
    <message>
        <source>The compressed image is damaged.</source>
        <translation>压缩图像已损坏。</translation>
    </message>
    <message>
        <source>The image is compressed in a way that is not known here.</source>
        <translation>图像的压缩方式未知。</translation>
    </message>
    <message>
        <source>The image was compressed under other settings than those that the camera told.</source>
        <translation>图像压缩时使用的设置与相机告知的不同。</translation>
    </message>
    <message>
        <source>The compressed image cannot be decoded (status %1).</source>
        <translation>无法解码压缩图像（状态 %1）。</translation>
    </message>
    <message>
        <source>The camera&apos;s address %1 is in another subnet than the network adapter %2 (%3). Give the camera an address of the adapter&apos;s subnet, or the adapter one of the camera&apos;s.</source>
        <translation>相机地址 %1 与网络适配器 %2 (%3) 不在同一子网。请为相机设置适配器子网内的地址，或为适配器设置相机子网内的地址。</translation>
    </message>
    <message>
        <source>Another application controls the camera: %1 End it there, or watch the camera with &apos;poolcli monitor&apos;.</source>
        <translation>另一个应用程序正在控制相机: %1 请结束该程序，或用 &apos;poolcli monitor&apos; 观看相机。</translation>
    </message>
    <message>
        <source>The camera is seen but answers no commands. Another device may have the same address %1, or a firewall stops UDP port 3956.</source>
        <translation>能看到相机，但它不响应命令。可能有其他设备使用相同的地址 %1，或防火墙阻止了 UDP 端口 3956。</translation>
    </message>
    <message>
        <source>The camera could not be opened: %1</source>
        <translation>无法打开相机: %1</translation>
    </message>
    <message>
        <source>The connection to the camera was lost: check cable, power and switch.</source>
        <translation>与相机的连接已断开: 请检查电缆、电源和交换机。</translation>
    </message>
    <message>
        <source>The camera does not start grabbing: %1</source>
        <translation>相机未开始采集: %1</translation>
    </message>
    <message>
        <source>No test packet arrives, and the camera waits for a trigger. Send one, or switch TriggerMode off, to see whether images arrive.</source>
        <translation>没有收到测试数据包，而且相机在等待触发。请发送触发或关闭 TriggerMode，以查看图像是否到达。</translation>
    </message>
    <message>
        <source>Commands are answered, so packets are sent, but none arrives, neither test packets nor images. Does a firewall stop them? Let UDP packets from %1 through on the adapter %2.</source>
        <translation>命令有响应，因此数据包已发送，但测试数据包和图像都没有到达。是否被防火墙阻止? 请在适配器 %2 上放行来自 %1 的 UDP 数据包。</translation>
    </message>
    <message>
        <source>The packets of %1 bytes are too large for the way to this computer, which carries %2. Set GevSCPSPacketSize to %2, leave it alone, or set up jumbo frames on every switch and adapter.</source>
        <translation>%1 字节的数据包对于到本机的路径来说太大，该路径只能传送 %2 字节。请将 GevSCPSPacketSize 设为 %2，或不要设置它，或在所有交换机和适配器上启用巨型帧。</translation>
    </message>
    <message>
        <source>Packets arrive, but none of %1 images was complete.</source>
        <translation>数据包能到达，但 %1 幅图像全都不完整。</translation>
    </message>
    <message>
        <source>Test packets arrive, but the camera sends no image: does it wait for a trigger?</source>
        <translation>测试数据包能到达，但相机不发送图像: 是否在等待触发?</translation>
    </message>
    <message>
        <source>The socket buffer is capped at %1 bytes, and images of this size need %2: images may be lost. Raise the limit with: sysctl -w net.core.rmem_max=%2</source>
        <translation>套接字缓冲区被限制为 %1 字节，而这种大小的图像需要 %2 字节: 可能丢失图像。用以下命令提高上限: sysctl -w net.core.rmem_max=%2</translation>
    </message>
    <message>
        <source>Only packets of up to %1 bytes arrive, though the adapter takes %2: a switch on the way, or the camera, does not do jumbo frames. Images cost more processor time.</source>
        <translation>适配器可接收 %2 字节，但只有不超过 %1 字节的数据包到达: 途中的交换机或相机不支持巨型帧。接收图像会占用更多处理器时间。</translation>
    </message>
    <message>
        <source>%1 of %2 images were incomplete: packets are lost. With several cameras on the adapter, let &apos;poolcli network plan --apply&apos; set pauses between packets.</source>
        <translation>%2 幅图像中有 %1 幅不完整: 有数据包丢失。如果适配器上有多台相机，请用 &apos;poolcli network plan --apply&apos; 设置数据包之间的间隔。</translation>
    </message>
</context>
<context>
    <name>ParameterCollection::CParameterCollection</name>
    <message>
        <source>No node map has been announced under %1.</source>
        <translation>%1 下没有登记节点映射。</translation>
    </message>
    <message>
        <source>The node map under %1 is being detached.</source>
        <translation>%1 下的节点映射正在分离。</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CDataProcessingGraph</name>
    <message>
        <source>A null node cannot be added to the graph.</source>
        <translation>不能将空节点添加到图中。</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; is in the graph already.</source>
        <translation>节点“%1”已在图中。</translation>
    </message>
    <message>
        <source>The graph has a node &quot;%1&quot; for &quot;%2&quot; already.</source>
        <translation>图中已有用于“%2”的节点“%1”。</translation>
    </message>
    <message>
        <source>A node to be connected is not in the graph.</source>
        <translation>要连接的节点不在图中。</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no input port %2.</source>
        <translation>节点“%1”没有输入端口 %2。</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no output port %2.</source>
        <translation>节点“%1”没有输出端口 %2。</translation>
    </message>
    <message>
        <source>Input port %1 of the node &quot;%2&quot; is connected already.</source>
        <translation>节点“%2”的输入端口 %1 已连接。</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; allows only one connection.</source>
        <translation>节点“%2”的输出端口 %1 只允许一个连接。</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; gives &quot;%3&quot;, but input port %4 of the node &quot;%5&quot; takes &quot;%6&quot;.</source>
        <translation>节点“%2”的输出端口 %1 提供“%3”，但节点“%5”的输入端口 %4 接受“%6”。</translation>
    </message>
    <message>
        <source>Connecting the node &quot;%1&quot; to the node &quot;%2&quot; would close a circle.</source>
        <translation>将节点“%1”连接到节点“%2”会形成环路。</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>未知错误。</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CNodeRegistry</name>
    <message>
        <source>There is no kind of node with the name &quot;%1&quot;.</source>
        <translation>没有名为“%1”的节点类型。</translation>
    </message>
</context>
<context>
    <name>PoolCli</name>
    <message>
        <source>No camera found.</source>
        <translation>未找到相机。</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>MODEL</source>
        <translation>型号</translation>
    </message>
    <message>
        <source>SERIAL</source>
        <translation>序列号</translation>
    </message>
    <message>
        <source>USER NAME</source>
        <translation>用户名</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>ADDRESS</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Watching; Ctrl-C ends.</source>
        <translation>正在监视；按 Ctrl-C 结束。</translation>
    </message>
    <message>
        <source>PROPERTY</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>值</translation>
    </message>
    <message>
        <source>%1 does not start grabbing: %2</source>
        <translation>%1 无法开始采集：%2</translation>
    </message>
    <message>
        <source>%1: %2 images, %3 failed, %4 missing, %5 fps, %6 MB/s</source>
        <translation>%1：图像 %2，失败 %3，缺失 %4，%5 fps，%6 MB/s</translation>
    </message>
    <message>
        <source> (connection lost)</source>
        <translation>（连接已丢失）</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; 'poolcli --help' lists them.</source>
        <translation>没有命令“%1”；'poolcli --help' 会列出所有命令。</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>%1: picture in %2</source>
        <translation>%1：图片位于 %2</translation>
    </message>
    <message>
        <source>%1 gave no image: %2</source>
        <translation>%1 没有给出图像：%2</translation>
    </message>
    <message>
        <source>none arrived in time.</source>
        <translation>未及时到达。</translation>
    </message>
    <message>
        <source>%1 x %2 pixels in %3</source>
        <translation>%1 x %2 像素，位于 %3</translation>
    </message>
    <message>
        <source>%1 has no feature %2.</source>
        <translation>%1 没有功能 %2。</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>无法读取 %1：%2</translation>
    </message>
    <message>
        <source>There is no feature %1.</source>
        <translation>没有功能 %1。</translation>
    </message>
    <message>
        <source>%1 is no command; give a value as %1=VALUE.</source>
        <translation>%1 不是命令；请以 %1=值 的形式给出值。</translation>
    </message>
    <message>
        <source>%1 was refused: %2</source>
        <translation>%1 被拒绝：%2</translation>
    </message>
    <message>
        <source>%1 done</source>
        <translation>%1 完成</translation>
    </message>
    <message>
        <source>There is no camera.</source>
        <translation>没有相机。</translation>
    </message>
    <message>
        <source>There are %1 cameras; name one of them.</source>
        <translation>有 %1 台相机；请指定其中一台。</translation>
    </message>
    <message>
        <source>%1 could not be opened: %2</source>
        <translation>无法打开 %1：%2</translation>
    </message>
    <message>
        <source>it is in exclusive use.</source>
        <translation>它正被独占使用。</translation>
    </message>
    <message>
        <source>%1 has no parameters.</source>
        <translation>%1 没有参数。</translation>
    </message>
    <message>
        <source>%1: the connection to the camera was lost.</source>
        <translation>%1：与相机的连接已丢失。</translation>
    </message>
    <message>
        <source>No interface found.</source>
        <translation>未找到接口。</translation>
    </message>
    <message>
        <source>No feature to show.</source>
        <translation>没有可显示的参数。</translation>
    </message>
    <message>
        <source>No device on this interface.</source>
        <translation>此接口上没有设备。</translation>
    </message>
    <message>
        <source>ACCESS</source>
        <translation>访问</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>标识符</translation>
    </message>
    <message>
        <source>%1 is on no interface that could be opened; &apos;poolcli interfaces&apos; lists those.</source>
        <translation>%1 不在任何可打开的接口上；“poolcli interfaces”会列出这些接口。</translation>
    </message>
    <message>
        <source>, compressed to %1% (%2% to %3%), %4 lossless, %5 lossy, %6 not decodable</source>
        <translation>，压缩至 %1%（%2% 至 %3%），无损 %4，有损 %5，无法解码 %6</translation>
    </message>
    <message>
        <source>, compressed, %1 not decodable</source>
        <translation>，已压缩，无法解码 %1</translation>
    </message>
    <message>
        <source>%1: none of its compressed images can be decoded.</source>
        <translation>%1：压缩图像均无法解码。</translation>
    </message>
    <message>
        <source>%1 is on no interface: an emulated camera is on one when its data name it (&quot;interface&quot;).</source>
        <translation>%1 不在任何接口上：仿真相机的接口由其数据中的“interface”指定。</translation>
    </message>
    <message>
        <source>The camera has no chunk data.</source>
        <translation>相机没有块数据。</translation>
    </message>
    <message>
        <source>The camera has no chunk %1; it has: %2.</source>
        <translation>相机没有块 %1；可用的有：%2。</translation>
    </message>
    <message>
        <source>The chunk settings could not be restored: %1</source>
        <translation>无法恢复块设置：%1</translation>
    </message>
    <message>
        <source>no chunk data</source>
        <translation>无块数据</translation>
    </message>
    <message>
        <source>%1 sent images without chunk data.</source>
        <translation>%1 发送的图像不含块数据。</translation>
    </message>
    <message>
        <source>The camera reports no events.</source>
        <translation>相机不报告事件。</translation>
    </message>
    <message>
        <source>The camera&apos;s events cannot be received; the log says why.</source>
        <translation>无法接收相机的事件；原因见日志。</translation>
    </message>
    <message>
        <source>The camera has no event %1; it has: %2.</source>
        <translation>相机没有事件 %1；可用的有：%2。</translation>
    </message>
    <message>
        <source>The event settings could not be restored: %1</source>
        <translation>无法恢复事件设置：%1</translation>
    </message>
    <message>
        <source>%1 did not start: %2</source>
        <translation>%1 未启动：%2</translation>
    </message>
    <message>
        <source>The camera has no features that show the event %1.</source>
        <translation>相机没有显示事件 %1 的功能。</translation>
    </message>
    <message>
        <source>The camera has no features that show its events.</source>
        <translation>相机没有显示其事件的功能。</translation>
    </message>
    <message>
        <source>Waiting for %1; Ctrl-C ends.</source>
        <translation>正在等待 %1；按 Ctrl-C 结束。</translation>
    </message>
    <message>
        <source>%1 events came faster than they could be handled and were dropped.</source>
        <translation>%1 个事件到达过快，来不及处理而被丢弃。</translation>
    </message>
    <message>
        <source>Show what a camera reports by itself</source>
        <translation>显示相机主动报告的内容（事件）</translation>
    </message>
    <message>
        <source>Events, such as ExposureEnd; all that the camera has when none is named. They are switched on, and at the end as they were</source>
        <translation>事件，例如 ExposureEnd；未指定时为相机的全部事件。会将其开启，结束时恢复原状</translation>
    </message>
    <message>
        <source>Stop after that many events</source>
        <translation>达到此事件数后停止</translation>
    </message>
    <message>
        <source>Grab meanwhile: most events are of images</source>
        <translation>同时采集：大多数事件与图像有关</translation>
    </message>
    <message>
        <source>NAME=VALUE to write, or NAME of a command to execute, when events are on</source>
        <translation>事件开启后写入的 NAME=VALUE，或要执行的命令的 NAME</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera; action commands do not reach it.</source>
        <translation>%1 不是 GigE Vision 相机，动作命令无法到达。</translation>
    </message>
    <message>
        <source>The action command could not be sent to %1: perhaps no network adapter in use leads there. The reason is in the debug log (QT_LOGGING_RULES=&quot;default.debug=true&quot;).</source>
        <translation>无法将动作命令发送到 %1：可能没有使用中的网络适配器通向该地址。原因见调试日志 (QT_LOGGING_RULES=&quot;default.debug=true&quot;)。</translation>
    </message>
    <message>
        <source>Sent to %1; no answers asked for.</source>
        <translation>已发送到 %1；未要求应答。</translation>
    </message>
    <message>
        <source>ANSWER</source>
        <translation>应答</translation>
    </message>
    <message>
        <source>silent</source>
        <translation>无应答</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>已拒绝</translation>
    </message>
    <message>
        <source>accepted</source>
        <translation>已接受</translation>
    </message>
    <message>
        <source>Cameras refused the action command. Their reasons are in the debug log (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;).</source>
        <translation>有相机拒绝了动作命令。原因见调试日志 (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;)。</translation>
    </message>
    <message>
        <source>Cameras stayed silent: no application has them open, their keys or masks do not fit, or the command or its answer was lost.</source>
        <translation>有相机没有应答：没有应用程序打开它，其密钥或掩码不匹配，或者命令或应答已丢失。</translation>
    </message>
    <message>
        <source>No camera answered the action command: no application has one open, or their keys or masks do not fit.</source>
        <translation>没有相机应答动作命令：没有应用程序打开相机，或者其密钥或掩码不匹配。</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>动作</translation>
    </message>
    <message>
        <source>SCHEDULED</source>
        <translation>定时</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>no</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Print JSON</source>
        <translation>以 JSON 输出</translation>
    </message>
    <message>
        <source>Seconds to wait for cameras to be found</source>
        <translation>等待找到相机的秒数</translation>
    </message>
    <message>
        <source>User name, serial number, vendor-model-serial or full name; may be left out when there is only one</source>
        <translation>用户名称、序列号、厂商-型号-序列号或完整名称；只有一台时可省略</translation>
    </message>
    <message>
        <source>Only features whose name holds this text</source>
        <translation>仅限名称包含此文本的功能</translation>
    </message>
    <message>
        <source>Beginner, Expert, Guru or Invisible</source>
        <translation>Beginner、Expert、Guru 或 Invisible</translation>
    </message>
    <message>
        <source>Show a camera&apos;s features as a tree, with values</source>
        <translation>以树形显示相机的功能及其值</translation>
    </message>
    <message>
        <source>Only the node map of: camera, instant (the SDK&apos;s camera object), stream, tl (transport layer), event (event grabber), interface (that the camera is on); all shows every one of them</source>
        <translation>仅限以下节点映射：camera、instant（SDK 的相机对象）、stream、tl（传输层）、event（事件采集器）、interface（相机所在的接口）；all 显示全部</translation>
    </message>
    <message>
        <source>Read features</source>
        <translation>读取功能</translation>
    </message>
    <message>
        <source>The camera</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>Names, such as ExposureTime, @StreamGrabber0/PayloadSize or @Interface/InterfaceID</source>
        <translation>名称，例如 ExposureTime、@StreamGrabber0/PayloadSize 或 @Interface/InterfaceID</translation>
    </message>
    <message>
        <source>Write features and execute commands</source>
        <translation>写入功能并执行命令</translation>
    </message>
    <message>
        <source>NAME=VALUE writes, NAME executes a command</source>
        <translation>NAME=VALUE 写入，NAME 执行命令</translation>
    </message>
    <message>
        <source>Grab from one, several or all cameras at once</source>
        <translation>同时从一台、多台或所有相机采集</translation>
    </message>
    <message>
        <source>Cameras; all when none is named</source>
        <translation>相机；未指定时为全部</translation>
    </message>
    <message>
        <source>Stop after that many images of each camera</source>
        <translation>每台相机达到此图像数后停止</translation>
    </message>
    <message>
        <source>Stop after that time; without this and without -n, Ctrl-C ends</source>
        <translation>经过此时间后停止；若此项与 -n 均未指定，则按 Ctrl-C 结束</translation>
    </message>
    <message>
        <source>NAME=VALUE to write before grabbing</source>
        <translation>采集前写入的 NAME=VALUE</translation>
    </message>
    <message>
        <source>CAMERA NAME=VALUE: the same for one of the cameras</source>
        <translation>CAMERA NAME=VALUE：仅对其中一台相机执行同样的操作</translation>
    </message>
    <message>
        <source>Folder for one PNG of each camera&apos;s last image</source>
        <translation>保存每台相机最后一张图像（PNG）的文件夹</translation>
    </message>
    <message>
        <source>Take one image and write it as PNG (16 bits for deep formats)</source>
        <translation>拍摄一张图像并存为 PNG（高位深格式为 16 位）</translation>
    </message>
    <message>
        <source>The file; by default model-serial.png</source>
        <translation>文件；默认为 型号-序列号.png</translation>
    </message>
    <message>
        <source>Seconds to wait for the image</source>
        <translation>等待图像的秒数</translation>
    </message>
    <message>
        <source>Grab from one camera and print its statistics every second</source>
        <translation>从一台相机采集并每秒输出其统计信息</translation>
    </message>
    <message>
        <source>Watch a camera that another application controls, without touching it</source>
        <translation>监视由其他应用程序控制的相机，不对其进行任何干预</translation>
    </message>
    <message>
        <source>Stop after that many images</source>
        <translation>达到此图像数后停止</translation>
    </message>
    <message>
        <source>Stop after that time; 5 by default</source>
        <translation>经过此时间后停止；默认为 5</translation>
    </message>
    <message>
        <source>Grab with chunk data and show each image&apos;s values</source>
        <translation>带块数据采集并显示每张图像的值</translation>
    </message>
    <message>
        <source>Stop after that many images; 10 by default</source>
        <translation>达到此图像数后停止；默认为 10</translation>
    </message>
    <message>
        <source>Stop after that time</source>
        <translation>经过此时间后停止</translation>
    </message>
    <message>
        <source>Only these chunks, with commas between, such as Timestamp,Gain; all that the camera has by default. Settings are restored at the end</source>
        <translation>仅限这些块，以逗号分隔，例如 Timestamp,Gain；默认为相机的所有块。结束时恢复设置</translation>
    </message>
    <message>
        <source>List the cameras that can be found</source>
        <translation>列出可找到的相机</translation>
    </message>
    <message>
        <source>Show cameras coming and going, until Ctrl-C</source>
        <translation>显示相机的接入和移除，直到按下 Ctrl-C</translation>
    </message>
    <message>
        <source>End after that time</source>
        <translation>经过此时间后结束</translation>
    </message>
    <message>
        <source>Show all that discovery tells of one camera</source>
        <translation>显示发现过程中得到的一台相机的全部信息</translation>
    </message>
    <message>
        <source>List the interfaces; with a name: its features and the devices on it</source>
        <translation>列出接口；指定名称时显示其功能及其上的设备</translation>
    </message>
    <message>
        <source>Identifier, name or full name</source>
        <translation>标识符、名称或完整名称</translation>
    </message>
    <message>
        <source>Find, open and use cameras through the CameraPool plugin</source>
        <translation>通过 CameraPool 插件查找、打开和使用相机</translation>
    </message>
    <message>
        <source>Language of messages: en, ja, zh or ko</source>
        <translation>消息的语言：en、ja、zh 或 ko</translation>
    </message>
    <message>
        <source>Exit codes: 0 done, 1 the camera or the plugin refused (the reason is on stderr), 2 wrong usage.</source>
        <translation>退出代码：0 完成，1 相机或插件拒绝（原因见 stderr），2 用法错误。</translation>
    </message>
    <message>
        <source>Show this help and end</source>
        <translation>显示此帮助并退出</translation>
    </message>
    <message>
        <source>Show the version and end</source>
        <translation>显示版本并退出</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>用法</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>位置参数</translation>
    </message>
    <message>
        <source>SUBCOMMAND</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>必填</translation>
    </message>
    <message>
        <source>Cameras that must take it; without any, all that are found are listed</source>
        <translation>必须接受该命令的相机；未指定时列出找到的全部相机</translation>
    </message>
    <message>
        <source>ActionDeviceKey of the cameras; 0x... is hexadecimal</source>
        <translation>相机的 ActionDeviceKey；0x... 为十六进制</translation>
    </message>
    <message>
        <source>ActionGroupKey of one of their action signals</source>
        <translation>其某个动作信号的 ActionGroupKey</translation>
    </message>
    <message>
        <source>Signals whose ActionGroupMask has a bit in common with this; not 0</source>
        <translation>ActionGroupMask 与此值有共同位的信号；不可为 0</translation>
    </message>
    <message>
        <source>255.255.255.255 for every adapter, the broadcast address of a network, or one camera&apos;s own</source>
        <translation>255.255.255.255 表示所有适配器；也可为某网络的广播地址或某台相机自身的地址</translation>
    </message>
    <message>
        <source>Seconds to wait for answers; 0 asks for none</source>
        <translation>等待应答的秒数；0 表示不要求应答</translation>
    </message>
    <message>
        <source>When, in ticks of the cameras&apos; clocks (TimestampLatchValue)</source>
        <translation>时刻，以相机时钟的计数表示 (TimestampLatchValue)</translation>
    </message>
    <message>
        <source>Trigger many GigE Vision cameras at once (action commands)</source>
        <translation>同时触发多台 GigE Vision 相机（动作命令）</translation>
    </message>
    <message>
        <source>Trigger now</source>
        <translation>立即触发</translation>
    </message>
    <message>
        <source>Trigger at a time of the cameras&apos; synchronised clocks</source>
        <translation>在相机同步时钟的指定时刻触发</translation>
    </message>
    <message>
        <source>Open cameras and tell which take action commands</source>
        <translation>打开相机并显示哪些接受动作命令</translation>
    </message>
    <message>
        <source>Trying the way to the camera with test packets ...</source>
        <translation>正在用测试数据包试探到相机的路径 ...</translation>
    </message>
    <message>
        <source>%1: the way to the camera could not be tried: %2</source>
        <translation>%1: 无法试探到相机的路径: %2</translation>
    </message>
    <message>
        <source>Packets of up to %1 bytes arrive; the camera sends %2 (the adapter&apos;s limit is %3).</source>
        <translation>不超过 %1 字节的数据包能到达；相机发送 %2 字节 (适配器上限为 %3)。</translation>
    </message>
    <message>
        <source>No test packet arrives.</source>
        <translation>没有收到测试数据包。</translation>
    </message>
    <message>
        <source>Grabbing for %1 s ...</source>
        <translation>正在采集 %1 秒 ...</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera.</source>
        <translation>%1 不是 GigE Vision 相机。</translation>
    </message>
    <message>
        <source>Opening %1 at %2 through %3 ...</source>
        <translation>正在通过 %3 打开位于 %2 的 %1 ...</translation>
    </message>
    <message>
        <source>No images: %1</source>
        <translation>没有图像: %1</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>注意: %1</translation>
    </message>
    <message>
        <source>Ended early.</source>
        <translation>提前结束。</translation>
    </message>
    <message>
        <source>%1 images arrived, %2 incompletely.</source>
        <translation>收到 %1 幅图像，其中 %2 幅不完整。</translation>
    </message>
    <message>
        <source>%1 does not tell its frame rate; give it with --rate.</source>
        <translation>%1 不报告帧率；请用 --rate 指定。</translation>
    </message>
    <message>
        <source>%1: the pause between packets cannot be set: %2</source>
        <translation>%1: 无法设置数据包之间的间隔: %2</translation>
    </message>
    <message>
        <source>CAMERA</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>PACKET</source>
        <translation>数据包</translation>
    </message>
    <message>
        <source>LINK %</source>
        <translation>链路 %</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>间隔</translation>
    </message>
    <message>
        <source>TICKS</source>
        <translation>时钟计数</translation>
    </message>
    <message>
        <source>%1: %2 of %3 Mbit/s (%4 %), of which %5 % are kept free</source>
        <translation>%1: %3 Mbit/s 中的 %2 Mbit/s (%4 %)，其中保留 %5 %</translation>
    </message>
    <message>
        <source>Everything fits; the pauses are set.</source>
        <translation>全部容得下；间隔已设置。</translation>
    </message>
    <message>
        <source>Everything fits; --apply sets the pauses.</source>
        <translation>全部容得下；--apply 设置间隔。</translation>
    </message>
    <message>
        <source>The cameras on %1 need %2 Mbit/s, but only %3 can be used: images will be lost. Lower the frame rates, make the images smaller, or use another adapter for some cameras.</source>
        <translation>%1 上的相机需要 %2 Mbit/s，但只有 %3 可用: 将会丢失图像。请降低帧率、缩小图像，或让部分相机使用另一个适配器。</translation>
    </message>
    <message>
        <source>%1: lower the frame rate from %2 to %3</source>
        <translation>%1: 请将帧率从 %2 降到 %3</translation>
    </message>
    <message>
        <source>There is no plan for %1: %2</source>
        <translation>无法为 %1 制定计划: %2</translation>
    </message>
    <message>
        <source>The link speed of %1 is not known; give it with --link-speed.</source>
        <translation>%1 的链路速度未知；请用 --link-speed 指定。</translation>
    </message>
    <message>
        <source>There is no GigE Vision camera to plan for.</source>
        <translation>没有可供规划的 GigE Vision 相机。</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>ADAPTER</source>
        <translation>适配器</translation>
    </message>
    <message>
        <source>LINK</source>
        <translation>链路</translation>
    </message>
    <message>
        <source>CAMERAS</source>
        <translation>相机数</translation>
    </message>
    <message>
        <source>No GigE Vision camera answers.</source>
        <translation>没有 GigE Vision 相机响应。</translation>
    </message>
    <message>
        <source>No network adapter is searched for cameras.</source>
        <translation>没有网络适配器用于搜索相机。</translation>
    </message>
    <message>
        <source>%1: cameras in another subnet are not heard, for the system drops their answers (rp_filter is %2). To hear them: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</source>
        <translation>%1: 收不到其他子网中相机的应答，因为系统会丢弃它们 (rp_filter 为 %2)。若要接收: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</translation>
    </message>
    <message>
        <source>Socket buffers: capped at %1 bytes (net.core.rmem_max).</source>
        <translation>套接字缓冲区: 上限 %1 字节 (net.core.rmem_max)。</translation>
    </message>
    <message>
        <source>Divide each adapter&apos;s link among its cameras: bandwidth of each, pause between packets</source>
        <translation>将各适配器的链路分配给其相机: 各自带宽、数据包间隔</translation>
    </message>
    <message>
        <source>Cameras; all of GigE Vision when none is named</source>
        <translation>相机；未指定时为所有 GigE Vision 相机</translation>
    </message>
    <message>
        <source>Write the pauses into the cameras (GevSCPD)</source>
        <translation>将间隔写入相机 (GevSCPD)</translation>
    </message>
    <message>
        <source>Mbit/s of the link, where the adapter does not tell</source>
        <translation>链路的 Mbit/s (适配器未报告时)</translation>
    </message>
    <message>
        <source>Images per second of every camera, such as those of a trigger</source>
        <translation>每台相机的每秒图像数，例如触发频率</translation>
    </message>
    <message>
        <source>Per cent of the link to keep free</source>
        <translation>链路保留的百分比</translation>
    </message>
    <message>
        <source>Show network adapters and the cameras on them; plan bandwidth, find what stops images</source>
        <translation>显示网络适配器及其相机；规划带宽，查找阻止图像的原因</translation>
    </message>
    <message>
        <source>Open a camera, try the way to it, grab for a moment and say what stops images</source>
        <translation>打开相机，试探路径，采集片刻，并说明什么阻止了图像</translation>
    </message>
    <message>
        <source>How long to grab; 2 by default</source>
        <translation>采集时长；默认 2</translation>
    </message>
    <message>
        <source>Look into firmware packages and update cameras with them</source>
        <translation>查看固件包并用其更新相机</translation>
    </message>
    <message>
        <source>The firmware package</source>
        <translation>固件包</translation>
    </message>
    <message>
        <source>List the updates of a package</source>
        <translation>列出固件包中的更新</translation>
    </message>
    <message>
        <source>List the updates that fit a camera, newest first</source>
        <translation>列出适合相机的更新，最新的在前</translation>
    </message>
    <message>
        <source>Write an update into a camera</source>
        <translation>将更新写入相机</translation>
    </message>
    <message>
        <source>The version of the update; the newest that fits by default</source>
        <translation>更新的版本；默认为适合的最新版本</translation>
    </message>
    <message>
        <source>Do not ask before a downgrade</source>
        <translation>降级前不询问</translation>
    </message>
    <message>
        <source>Make a package of its description and its files</source>
        <translation>由描述文件及其文件制作固件包</translation>
    </message>
    <message>
        <source>The package&apos;s description, XML</source>
        <translation>固件包的描述 (XML)</translation>
    </message>
    <message>
        <source>VERSION</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>描述</translation>
    </message>
    <message>
        <source>RELEASE NOTES</source>
        <translation>发行说明</translation>
    </message>
    <message>
        <source>No update in %1 is for the camera %2.</source>
        <translation>%1 中没有适用于相机 %2 的更新。</translation>
    </message>
    <message>
        <source>Several updates fit %1, and their versions cannot be compared; name one with --version (&apos;poolcli firmware match&apos; lists them).</source>
        <translation>有多个更新适合 %1，且无法比较其版本；请用 --version 指定一个（&apos;poolcli firmware match&apos; 可列出）。</translation>
    </message>
    <message>
        <source>Several updates that fit %1 are equally new (%2 and %3); name one with --version.</source>
        <translation>适合 %1 的多个更新同样新（%2 和 %3）；请用 --version 指定一个。</translation>
    </message>
    <message>
        <source>No update to version %1 fits %2; &apos;poolcli firmware match&apos; lists those that do.</source>
        <translation>没有适合 %2 的版本 %1 更新；&apos;poolcli firmware match&apos; 可列出适合的更新。</translation>
    </message>
    <message>
        <source>Several updates to version %1 fit %2; take a package that holds one of them only.</source>
        <translation>有多个版本 %1 的更新适合 %2；请使用只包含其中一个的更新包。</translation>
    </message>
    <message>
        <source>upgrade</source>
        <translation>升级</translation>
    </message>
    <message>
        <source>downgrade</source>
        <translation>降级</translation>
    </message>
    <message>
        <source>the same version again</source>
        <translation>再次写入相同版本</translation>
    </message>
    <message>
        <source>not known whether newer</source>
        <translation>不确定是否更新</translation>
    </message>
    <message>
        <source>This may be a downgrade, and there is no terminal to ask on; agree with --yes.</source>
        <translation>这可能是降级，且没有可供询问的终端；请用 --yes 表示同意。</translation>
    </message>
    <message>
        <source>The camera would get an older version, or one that may be older. Go on? [y/N]</source>
        <translation>相机将得到较旧或可能较旧的版本。是否继续？[y/N]</translation>
    </message>
    <message>
        <source>Nothing was changed.</source>
        <translation>未作任何更改。</translation>
    </message>
    <message>
        <source>Interrupted: the update ends when the present step is done. Leave the camera switched on.</source>
        <translation>已中断：当前步骤完成后更新将结束。请保持相机通电。</translation>
    </message>
    <message>
        <source>Still waiting for the end of the present step. Leave the camera switched on.</source>
        <translation>仍在等待当前步骤结束。请保持相机通电。</translation>
    </message>
    <message>
        <source>%1: firmware %2 -&gt; %3 (%4)</source>
        <translation>%1：固件 %2 -&gt; %3 (%4)</translation>
    </message>
    <message>
        <source>The update of %1 did not complete: %2</source>
        <translation>%1 的更新未完成：%2</translation>
    </message>
    <message>
        <source>Nothing was written to the camera.</source>
        <translation>没有向相机写入任何内容。</translation>
    </message>
    <message>
        <source>The camera has firmware %1.</source>
        <translation>相机的固件为 %1。</translation>
    </message>
    <message>
        <source>Which firmware the camera has is not known: switch it off and on, look for it with &apos;poolcli list&apos;, and update it again.</source>
        <translation>相机现有的固件未知：请将相机断电后重新通电，用 &apos;poolcli list&apos; 查找相机，然后再次更新。</translation>
    </message>
    <message>
        <source>%1 was updated, but cannot be reached: %2</source>
        <translation>%1 已更新，但无法访问：%2</translation>
    </message>
    <message>
        <source>%1 has firmware %2 now.</source>
        <translation>%1 的固件现在是 %2。</translation>
    </message>
    <message>
        <source>%1 was made.</source>
        <translation>已制作 %1。</translation>
    </message>
    <message>
        <source>Checking the camera</source>
        <translation>正在检查相机</translation>
    </message>
    <message>
        <source>Reading the package</source>
        <translation>正在读取固件包</translation>
    </message>
    <message>
        <source>Writing a feature</source>
        <translation>正在写入特性</translation>
    </message>
    <message>
        <source>Executing a command</source>
        <translation>正在执行命令</translation>
    </message>
    <message>
        <source>Checking a feature</source>
        <translation>正在检查特性</translation>
    </message>
    <message>
        <source>Uploading a file</source>
        <translation>正在上传文件</translation>
    </message>
    <message>
        <source>Restarting the camera</source>
        <translation>正在重启相机</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>正在更新</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>Estimated time: %1</source>
        <translation>预计时间：%1</translation>
    </message>
</context>
</TS>
