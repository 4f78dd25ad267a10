<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Core::Plugin::CPluginManager</name>
    <message>
        <source>unknown error</source>
        <translation>unknown error</translation>
    </message>
    <message>
        <source>The plugin folder &quot;%1&quot; cannot be read.</source>
        <translation>The plugin folder &quot;%1&quot; cannot be read.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; was not started, because the plugin &quot;%2&quot; that it needs failed.</source>
        <translation>The plugin &quot;%1&quot; was not started, because the plugin &quot;%2&quot; that it needs failed.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: %2.</source>
        <translation>The plugin &quot;%1&quot; could not be loaded: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: its instance is not a plugin.</source>
        <translation>The plugin &quot;%1&quot; could not be loaded: its instance is not a plugin.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized.</source>
        <translation>The plugin &quot;%1&quot; could not be initialized.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized: %2.</source>
        <translation>The plugin &quot;%1&quot; could not be initialized: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start.</source>
        <translation>The plugin &quot;%1&quot; could not finish its start.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start: %2.</source>
        <translation>The plugin &quot;%1&quot; could not finish its start: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; failed while stopping: %2.</source>
        <translation>The plugin &quot;%1&quot; failed while stopping: %2.</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginMetadata</name>
    <message>
        <source>The plugin file &quot;%1&quot; does not exist.</source>
        <translation>The plugin file &quot;%1&quot; does not exist.</translation>
    </message>
    <message>
        <source>it has no plugin metadata</source>
        <translation>it has no plugin metadata</translation>
    </message>
    <message>
        <source>its interface identifier is &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation>its interface identifier is &quot;%1&quot; instead of &quot;%2&quot;</translation>
    </message>
    <message>
        <source>its metadata has no object &quot;MetaData&quot;</source>
        <translation>its metadata has no object &quot;MetaData&quot;</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not true or false</source>
        <translation>the entry &quot;%1&quot; of its metadata is not true or false</translation>
    </message>
    <message>
        <source>its metadata has no name</source>
        <translation>its metadata has no name</translation>
    </message>
    <message>
        <source>its compatible version %1 is newer than its version %2</source>
        <translation>its compatible version %1 is newer than its version %2</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a list</source>
        <translation>the entry &quot;%1&quot; of its metadata is not a list</translation>
    </message>
    <message>
        <source>dependency number %1 of its metadata has no name</source>
        <translation>dependency number %1 of its metadata has no name</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a text</source>
        <translation>the entry &quot;%1&quot; of its metadata is not a text</translation>
    </message>
    <message>
        <source>its metadata has no entry &quot;%1&quot;</source>
        <translation>its metadata has no entry &quot;%1&quot;</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata, &quot;%2&quot;, is not a version</source>
        <translation>the entry &quot;%1&quot; of its metadata, &quot;%2&quot;, is not a version</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not a plugin that can be used: %2.</source>
        <translation>The file &quot;%1&quot; is not a plugin that can be used: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3.</source>
        <translation>The plugin &quot;%1&quot; (%2) cannot be used: %3.</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginResolver</name>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3 has the same name.</source>
        <translation>The plugin &quot;%1&quot; (%2) cannot be used: %3 has the same name.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, which is missing.</source>
        <translation>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, which is missing.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, but that one has version %4, compatible down to %5.</source>
        <translation>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, but that one has version %4, compatible down to %5.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot;, which cannot be used.</source>
        <translation>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot;, which cannot be used.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; depends on itself: %2.</source>
        <translation>The plugin &quot;%1&quot; depends on itself: %2.</translation>
    </message>
</context>
<context>
    <name>HostKit</name>
    <message>
        <source>There is no camera called &quot;%1&quot;.</source>
        <translation>There is no camera called &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Several cameras are called &quot;%1&quot;: %2.</source>
        <translation>Several cameras are called &quot;%1&quot;: %2.</translation>
    </message>
    <message>
        <source>No plugin offers the service %1.</source>
        <translation>No plugin offers the service %1.</translation>
    </message>
    <message>
        <source>The pixel format 0x%1 cannot be shown.</source>
        <translation>The pixel format 0x%1 cannot be shown.</translation>
    </message>
    <message>
        <source>An image of %1 x %2 pixels cannot be shown.</source>
        <translation>An image of %1 x %2 pixels cannot be shown.</translation>
    </message>
    <message>
        <source>The image holds %1 bytes where its %2 x %3 pixels of %4 need %5.</source>
        <translation>The image holds %1 bytes where its %2 x %3 pixels of %4 need %5.</translation>
    </message>
    <message>
        <source>There is no image.</source>
        <translation>There is no image.</translation>
    </message>
    <message>
        <source>There is no interface called &quot;%1&quot;.</source>
        <translation>There is no interface called &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Several interfaces are called &quot;%1&quot;: %2.</source>
        <translation>Several interfaces are called &quot;%1&quot;: %2.</translation>
    </message>
    <message>
        <source>The image is compressed, and the camera did not tell how.</source>
        <translation>The image is compressed, and the camera did not tell how.</translation>
    </message>
    <message>
        <source>The camera could not make the image as small as it was told to.</source>
        <translation>The camera could not make the image as small as it was told to.</translation>
    </message>
    <message>
        <source>Bytes are missing at the end of the compressed image.</source>
        <translation>Bytes are missing at the end of the compressed image.</translation>
    </message>
    <message>
        <source>The compressed image is damaged.</source>
        <translation>The compressed image is damaged.</translation>
    </message>
    <message>
        <source>The image is compressed in a way that is not known here.</source>
        <translation>The image is compressed in a way that is not known here.</translation>
    </message>
    <message>
        <source>The image was compressed under other settings than those that the camera told.</source>
        <translation>The image was compressed under other settings than those that the camera told.</translation>
    </message>
    <message>
        <source>The compressed image cannot be decoded (status %1).</source>
        <translation>The compressed image cannot be decoded (status %1).</translation>
    </message>
    <message>
        <source>The camera&apos;s address %1 is in another subnet than the network adapter %2 (%3). Give the camera an address of the adapter&apos;s subnet, or the adapter one of the camera&apos;s.</source>
        <translation>The camera&apos;s address %1 is in another subnet than the network adapter %2 (%3). Give the camera an address of the adapter&apos;s subnet, or the adapter one of the camera&apos;s.</translation>
    </message>
    <message>
        <source>Another application controls the camera: %1 End it there, or watch the camera with &apos;poolcli monitor&apos;.</source>
        <translation>Another application controls the camera: %1 End it there, or watch the camera with &apos;poolcli monitor&apos;.</translation>
    </message>
    <message>
        <source>The camera is seen but answers no commands. Another device may have the same address %1, or a firewall stops UDP port 3956.</source>
        <translation>The camera is seen but answers no commands. Another device may have the same address %1, or a firewall stops UDP port 3956.</translation>
    </message>
    <message>
        <source>The camera could not be opened: %1</source>
        <translation>The camera could not be opened: %1</translation>
    </message>
    <message>
        <source>The connection to the camera was lost: check cable, power and switch.</source>
        <translation>The connection to the camera was lost: check cable, power and switch.</translation>
    </message>
    <message>
        <source>The camera does not start grabbing: %1</source>
        <translation>The camera does not start grabbing: %1</translation>
    </message>
    <message>
        <source>No test packet arrives, and the camera waits for a trigger. Send one, or switch TriggerMode off, to see whether images arrive.</source>
        <translation>No test packet arrives, and the camera waits for a trigger. Send one, or switch TriggerMode off, to see whether images arrive.</translation>
    </message>
    <message>
        <source>Commands are answered, so packets are sent, but none arrives, neither test packets nor images. Does a firewall stop them? Let UDP packets from %1 through on the adapter %2.</source>
        <translation>Commands are answered, so packets are sent, but none arrives, neither test packets nor images. Does a firewall stop them? Let UDP packets from %1 through on the adapter %2.</translation>
    </message>
    <message>
        <source>The packets of %1 bytes are too large for the way to this computer, which carries %2. Set GevSCPSPacketSize to %2, leave it alone, or set up jumbo frames on every switch and adapter.</source>
        <translation>The packets of %1 bytes are too large for the way to this computer, which carries %2. Set GevSCPSPacketSize to %2, leave it alone, or set up jumbo frames on every switch and adapter.</translation>
    </message>
    <message>
        <source>Packets arrive, but none of %1 images was complete.</source>
        <translation>Packets arrive, but none of %1 images was complete.</translation>
    </message>
    <message>
        <source>Test packets arrive, but the camera sends no image: does it wait for a trigger?</source>
        <translation>Test packets arrive, but the camera sends no image: does it wait for a trigger?</translation>
    </message>
    <message>
        <source>The socket buffer is capped at %1 bytes, and images of this size need %2: images may be lost. Raise the limit with: sysctl -w net.core.rmem_max=%2</source>
        <translation>The socket buffer is capped at %1 bytes, and images of this size need %2: images may be lost. Raise the limit with: sysctl -w net.core.rmem_max=%2</translation>
    </message>
    <message>
        <source>Only packets of up to %1 bytes arrive, though the adapter takes %2: a switch on the way, or the camera, does not do jumbo frames. Images cost more processor time.</source>
        <translation>Only packets of up to %1 bytes arrive, though the adapter takes %2: a switch on the way, or the camera, does not do jumbo frames. Images cost more processor time.</translation>
    </message>
    <message>
        <source>%1 of %2 images were incomplete: packets are lost. With several cameras on the adapter, let &apos;poolcli network plan --apply&apos; set pauses between packets.</source>
        <translation>%1 of %2 images were incomplete: packets are lost. With several cameras on the adapter, let &apos;poolcli network plan --apply&apos; set pauses between packets.</translation>
    </message>
</context>
<context>
    <name>ParameterCollection::CParameterCollection</name>
    <message>
        <source>No node map has been announced under %1.</source>
        <translation>No node map has been announced under %1.</translation>
    </message>
    <message>
        <source>The node map under %1 is being detached.</source>
        <translation>The node map under %1 is being detached.</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CDataProcessingGraph</name>
    <message>
        <source>A null node cannot be added to the graph.</source>
        <translation>A null node cannot be added to the graph.</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; is in the graph already.</source>
        <translation>The node &quot;%1&quot; is in the graph already.</translation>
    </message>
    <message>
        <source>The graph has a node &quot;%1&quot; for &quot;%2&quot; already.</source>
        <translation>The graph has a node &quot;%1&quot; for &quot;%2&quot; already.</translation>
    </message>
    <message>
        <source>A node to be connected is not in the graph.</source>
        <translation>A node to be connected is not in the graph.</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no input port %2.</source>
        <translation>The node &quot;%1&quot; has no input port %2.</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no output port %2.</source>
        <translation>The node &quot;%1&quot; has no output port %2.</translation>
    </message>
    <message>
        <source>Input port %1 of the node &quot;%2&quot; is connected already.</source>
        <translation>Input port %1 of the node &quot;%2&quot; is connected already.</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; allows only one connection.</source>
        <translation>Output port %1 of the node &quot;%2&quot; allows only one connection.</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; gives &quot;%3&quot;, but input port %4 of the node &quot;%5&quot; takes &quot;%6&quot;.</source>
        <translation>Output port %1 of the node &quot;%2&quot; gives &quot;%3&quot;, but input port %4 of the node &quot;%5&quot; takes &quot;%6&quot;.</translation>
    </message>
    <message>
        <source>Connecting the node &quot;%1&quot; to the node &quot;%2&quot; would close a circle.</source>
        <translation>Connecting the node &quot;%1&quot; to the node &quot;%2&quot; would close a circle.</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>Unknown error.</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CNodeRegistry</name>
    <message>
        <source>There is no kind of node with the name &quot;%1&quot;.</source>
        <translation>There is no kind of node with the name &quot;%1&quot;.</translation>
    </message>
</context>
<context>
    <name>PoolCli</name>
    <message>
        <source>No camera found.</source>
        <translation>No camera found.</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>NAME</translation>
    </message>
    <message>
        <source>MODEL</source>
        <translation>MODEL</translation>
    </message>
    <message>
        <source>SERIAL</source>
        <translation>SERIAL</translation>
    </message>
    <message>
        <source>USER NAME</source>
        <translation>USER NAME</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>TYPE</translation>
    </message>
    <message>
        <source>ADDRESS</source>
        <translation>ADDRESS</translation>
    </message>
    <message>
        <source>Watching; Ctrl-C ends.</source>
        <translation>Watching; Ctrl-C ends.</translation>
    </message>
    <message>
        <source>PROPERTY</source>
        <translation>PROPERTY</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>VALUE</translation>
    </message>
    <message>
        <source>%1 does not start grabbing: %2</source>
        <translation>%1 does not start grabbing: %2</translation>
    </message>
    <message>
        <source>%1: %2 images, %3 failed, %4 missing, %5 fps, %6 MB/s</source>
        <translation>%1: %2 images, %3 failed, %4 missing, %5 fps, %6 MB/s</translation>
    </message>
    <message>
        <source> (connection lost)</source>
        <translation> (connection lost)</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; 'poolcli --help' lists them.</source>
        <translation>There is no command &quot;%1&quot;; 'poolcli --help' lists them.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 could not be written: %2</translation>
    </message>
    <message>
        <source>%1: picture in %2</source>
        <translation>%1: picture in %2</translation>
    </message>
    <message>
        <source>%1 gave no image: %2</source>
        <translation>%1 gave no image: %2</translation>
    </message>
    <message>
        <source>none arrived in time.</source>
        <translation>none arrived in time.</translation>
    </message>
    <message>
        <source>%1 x %2 pixels in %3</source>
        <translation>%1 x %2 pixels in %3</translation>
    </message>
    <message>
        <source>%1 has no feature %2.</source>
        <translation>%1 has no feature %2.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 cannot be read: %2</translation>
    </message>
    <message>
        <source>There is no feature %1.</source>
        <translation>There is no feature %1.</translation>
    </message>
    <message>
        <source>%1 is no command; give a value as %1=VALUE.</source>
        <translation>%1 is no command; give a value as %1=VALUE.</translation>
    </message>
    <message>
        <source>%1 was refused: %2</source>
        <translation>%1 was refused: %2</translation>
    </message>
    <message>
        <source>%1 done</source>
        <translation>%1 done</translation>
    </message>
    <message>
        <source>There is no camera.</source>
        <translation>There is no camera.</translation>
    </message>
    <message>
        <source>There are %1 cameras; name one of them.</source>
        <translation>There are %1 cameras; name one of them.</translation>
    </message>
    <message>
        <source>%1 could not be opened: %2</source>
        <translation>%1 could not be opened: %2</translation>
    </message>
    <message>
        <source>it is in exclusive use.</source>
        <translation>it is in exclusive use.</translation>
    </message>
    <message>
        <source>%1 has no parameters.</source>
        <translation>%1 has no parameters.</translation>
    </message>
    <message>
        <source>%1: the connection to the camera was lost.</source>
        <translation>%1: the connection to the camera was lost.</translation>
    </message>
    <message>
        <source>No interface found.</source>
        <translation>No interface found.</translation>
    </message>
    <message>
        <source>No feature to show.</source>
        <translation>No feature to show.</translation>
    </message>
    <message>
        <source>No device on this interface.</source>
        <translation>No device on this interface.</translation>
    </message>
    <message>
        <source>ACCESS</source>
        <translation>ACCESS</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>IDENTIFIER</translation>
    </message>
    <message>
        <source>%1 is on no interface that could be opened; &apos;poolcli interfaces&apos; lists those.</source>
        <translation>%1 is on no interface that could be opened; &apos;poolcli interfaces&apos; lists those.</translation>
    </message>
    <message>
        <source>, compressed to %1% (%2% to %3%), %4 lossless, %5 lossy, %6 not decodable</source>
        <translation>, compressed to %1% (%2% to %3%), %4 lossless, %5 lossy, %6 not decodable</translation>
    </message>
    <message>
        <source>, compressed, %1 not decodable</source>
        <translation>, compressed, %1 not decodable</translation>
    </message>
    <message>
        <source>%1: none of its compressed images can be decoded.</source>
        <translation>%1: none of its compressed images can be decoded.</translation>
    </message>
    <message>
        <source>%1 is on no interface: an emulated camera is on one when its data name it (&quot;interface&quot;).</source>
        <translation>%1 is on no interface: an emulated camera is on one when its data name it (&quot;interface&quot;).</translation>
    </message>
    <message>
        <source>The camera has no chunk data.</source>
        <translation>The camera has no chunk data.</translation>
    </message>
    <message>
        <source>The camera has no chunk %1; it has: %2.</source>
        <translation>The camera has no chunk %1; it has: %2.</translation>
    </message>
    <message>
        <source>The chunk settings could not be restored: %1</source>
        <translation>The chunk settings could not be restored: %1</translation>
    </message>
    <message>
        <source>no chunk data</source>
        <translation>no chunk data</translation>
    </message>
    <message>
        <source>%1 sent images without chunk data.</source>
        <translation>%1 sent images without chunk data.</translation>
    </message>
    <message>
        <source>The camera reports no events.</source>
        <translation>The camera reports no events.</translation>
    </message>
    <message>
        <source>The camera&apos;s events cannot be received; the log says why.</source>
        <translation>The camera&apos;s events cannot be received; the log says why.</translation>
    </message>
    <message>
        <source>The camera has no event %1; it has: %2.</source>
        <translation>The camera has no event %1; it has: %2.</translation>
    </message>
    <message>
        <source>The event settings could not be restored: %1</source>
        <translation>The event settings could not be restored: %1</translation>
    </message>
    <message>
        <source>%1 did not start: %2</source>
        <translation>%1 did not start: %2</translation>
    </message>
    <message>
        <source>The camera has no features that show the event %1.</source>
        <translation>The camera has no features that show the event %1.</translation>
    </message>
    <message>
        <source>The camera has no features that show its events.</source>
        <translation>The camera has no features that show its events.</translation>
    </message>
    <message>
        <source>Waiting for %1; Ctrl-C ends.</source>
        <translation>Waiting for %1; Ctrl-C ends.</translation>
    </message>
    <message>
        <source>%1 events came faster than they could be handled and were dropped.</source>
        <translation>%1 events came faster than they could be handled and were dropped.</translation>
    </message>
    <message>
        <source>Show what a camera reports by itself</source>
        <translation>Show what a camera reports by itself</translation>
    </message>
    <message>
        <source>Events, such as ExposureEnd; all that the camera has when none is named. They are switched on, and at the end as they were</source>
        <translation>Events, such as ExposureEnd; all that the camera has when none is named. They are switched on, and at the end as they were</translation>
    </message>
    <message>
        <source>Stop after that many events</source>
        <translation>Stop after that many events</translation>
    </message>
    <message>
        <source>Grab meanwhile: most events are of images</source>
        <translation>Grab meanwhile: most events are of images</translation>
    </message>
    <message>
        <source>NAME=VALUE to write, or NAME of a command to execute, when events are on</source>
        <translation>NAME=VALUE to write, or NAME of a command to execute, when events are on</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera; action commands do not reach it.</source>
        <translation>%1 is no GigE Vision camera; action commands do not reach it.</translation>
    </message>
    <message>
        <source>The action command could not be sent to %1: perhaps no network adapter in use leads there. The reason is in the debug log (QT_LOGGING_RULES=&quot;default.debug=true&quot;).</source>
        <translation>The action command could not be sent to %1: perhaps no network adapter in use leads there. The reason is in the debug log (QT_LOGGING_RULES=&quot;default.debug=true&quot;).</translation>
    </message>
    <message>
        <source>Sent to %1; no answers asked for.</source>
        <translation>Sent to %1; no answers asked for.</translation>
    </message>
    <message>
        <source>ANSWER</source>
        <translation>ANSWER</translation>
    </message>
    <message>
        <source>silent</source>
        <translation>silent</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>refused</translation>
    </message>
    <message>
        <source>accepted</source>
        <translation>accepted</translation>
    </message>
    <message>
        <source>Cameras refused the action command. Their reasons are in the debug log (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;).</source>
        <translation>Cameras refused the action command. Their reasons are in the debug log (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;).</translation>
    </message>
    <message>
        <source>Cameras stayed silent: no application has them open, their keys or masks do not fit, or the command or its answer was lost.</source>
        <translation>Cameras stayed silent: no application has them open, their keys or masks do not fit, or the command or its answer was lost.</translation>
    </message>
    <message>
        <source>No camera answered the action command: no application has one open, or their keys or masks do not fit.</source>
        <translation>No camera answered the action command: no application has one open, or their keys or masks do not fit.</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>ACTION</translation>
    </message>
    <message>
        <source>SCHEDULED</source>
        <translation>SCHEDULED</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>yes</translation>
    </message>
    <message>
        <source>no</source>
        <translation>no</translation>
    </message>
    <message>
        <source>Print JSON</source>
        <translation>Print JSON</translation>
    </message>
    <message>
        <source>Seconds to wait for cameras to be found</source>
        <translation>Seconds to wait for cameras to be found</translation>
    </message>
    <message>
        <source>User name, serial number, vendor-model-serial or full name; may be left out when there is only one</source>
        <translation>User name, serial number, vendor-model-serial or full name; may be left out when there is only one</translation>
    </message>
    <message>
        <source>Only features whose name holds this text</source>
        <translation>Only features whose name holds this text</translation>
    </message>
    <message>
        <source>Beginner, Expert, Guru or Invisible</source>
        <translation>Beginner, Expert, Guru or Invisible</translation>
    </message>
    <message>
        <source>Show a camera&apos;s features as a tree, with values</source>
        <translation>Show a camera&apos;s features as a tree, with values</translation>
    </message>
    <message>
        <source>Only the node map of: camera, instant (the SDK&apos;s camera object), stream, tl (transport layer), event (event grabber), interface (that the camera is on); all shows every one of them</source>
        <translation>Only the node map of: camera, instant (the SDK&apos;s camera object), stream, tl (transport layer), event (event grabber), interface (that the camera is on); all shows every one of them</translation>
    </message>
    <message>
        <source>Read features</source>
        <translation>Read features</translation>
    </message>
    <message>
        <source>The camera</source>
        <translation>The camera</translation>
    </message>
    <message>
        <source>Names, such as ExposureTime, @StreamGrabber0/PayloadSize or @Interface/InterfaceID</source>
        <translation>Names, such as ExposureTime, @StreamGrabber0/PayloadSize or @Interface/InterfaceID</translation>
    </message>
    <message>
        <source>Write features and execute commands</source>
        <translation>Write features and execute commands</translation>
    </message>
    <message>
        <source>NAME=VALUE writes, NAME executes a command</source>
        <translation>NAME=VALUE writes, NAME executes a command</translation>
    </message>
    <message>
        <source>Grab from one, several or all cameras at once</source>
        <translation>Grab from one, several or all cameras at once</translation>
    </message>
    <message>
        <source>Cameras; all when none is named</source>
        <translation>Cameras; all when none is named</translation>
    </message>
    <message>
        <source>Stop after that many images of each camera</source>
        <translation>Stop after that many images of each camera</translation>
    </message>
    <message>
        <source>Stop after that time; without this and without -n, Ctrl-C ends</source>
        <translation>Stop after that time; without this and without -n, Ctrl-C ends</translation>
    </message>
    <message>
        <source>NAME=VALUE to write before grabbing</source>
        <translation>NAME=VALUE to write before grabbing</translation>
    </message>
    <message>
        <source>CAMERA NAME=VALUE: the same for one of the cameras</source>
        <translation>CAMERA NAME=VALUE: the same for one of the cameras</translation>
    </message>
    <message>
        <source>Folder for one PNG of each camera&apos;s last image</source>
        <translation>Folder for one PNG of each camera&apos;s last image</translation>
    </message>
    <message>
        <source>Take one image and write it as PNG (16 bits for deep formats)</source>
        <translation>Take one image and write it as PNG (16 bits for deep formats)</translation>
    </message>
    <message>
        <source>The file; by default model-serial.png</source>
        <translation>The file; by default model-serial.png</translation>
    </message>
    <message>
        <source>Seconds to wait for the image</source>
        <translation>Seconds to wait for the image</translation>
    </message>
    <message>
        <source>Grab from one camera and print its statistics every second</source>
        <translation>Grab from one camera and print its statistics every second</translation>
    </message>
    <message>
        <source>Watch a camera that another application controls, without touching it</source>
        <translation>Watch a camera that another application controls, without touching it</translation>
    </message>
    <message>
        <source>Stop after that many images</source>
        <translation>Stop after that many images</translation>
    </message>
    <message>
        <source>Stop after that time; 5 by default</source>
        <translation>Stop after that time; 5 by default</translation>
    </message>
    <message>
        <source>Grab with chunk data and show each image&apos;s values</source>
        <translation>Grab with chunk data and show each image&apos;s values</translation>
    </message>
    <message>
        <source>Stop after that many images; 10 by default</source>
        <translation>Stop after that many images; 10 by default</translation>
    </message>
    <message>
        <source>Stop after that time</source>
        <translation>Stop after that time</translation>
    </message>
    <message>
        <source>Only these chunks, with commas between, such as Timestamp,Gain; all that the camera has by default. Settings are restored at the end</source>
        <translation>Only these chunks, with commas between, such as Timestamp,Gain; all that the camera has by default. Settings are restored at the end</translation>
    </message>
    <message>
        <source>List the cameras that can be found</source>
        <translation>List the cameras that can be found</translation>
    </message>
    <message>
        <source>Show cameras coming and going, until Ctrl-C</source>
        <translation>Show cameras coming and going, until Ctrl-C</translation>
    </message>
    <message>
        <source>End after that time</source>
        <translation>End after that time</translation>
    </message>
    <message>
        <source>Show all that discovery tells of one camera</source>
        <translation>Show all that discovery tells of one camera</translation>
    </message>
    <message>
        <source>List the interfaces; with a name: its features and the devices on it</source>
        <translation>List the interfaces; with a name: its features and the devices on it</translation>
    </message>
    <message>
        <source>Identifier, name or full name</source>
        <translation>Identifier, name or full name</translation>
    </message>
    <message>
        <source>Find, open and use cameras through the CameraPool plugin</source>
        <translation>Find, open and use cameras through the CameraPool plugin</translation>
    </message>
    <message>
        <source>Language of messages: en, ja, zh or ko</source>
        <translation>Language of messages: en, ja, zh or ko</translation>
    </message>
    <message>
        <source>Exit codes: 0 done, 1 the camera or the plugin refused (the reason is on stderr), 2 wrong usage.</source>
        <translation>Exit codes: 0 done, 1 the camera or the plugin refused (the reason is on stderr), 2 wrong usage.</translation>
    </message>
    <message>
        <source>Show this help and end</source>
        <translation>Show this help and end</translation>
    </message>
    <message>
        <source>Show the version and end</source>
        <translation>Show the version and end</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Usage</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>OPTIONS</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>Positionals</translation>
    </message>
    <message>
        <source>SUBCOMMAND</source>
        <translation>SUBCOMMAND</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>Subcommands</translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>REQUIRED</translation>
    </message>
    <message>
        <source>Cameras that must take it; without any, all that are found are listed</source>
        <translation>Cameras that must take it; without any, all that are found are listed</translation>
    </message>
    <message>
        <source>ActionDeviceKey of the cameras; 0x... is hexadecimal</source>
        <translation>ActionDeviceKey of the cameras; 0x... is hexadecimal</translation>
    </message>
    <message>
        <source>ActionGroupKey of one of their action signals</source>
        <translation>ActionGroupKey of one of their action signals</translation>
    </message>
    <message>
        <source>Signals whose ActionGroupMask has a bit in common with this; not 0</source>
        <translation>Signals whose ActionGroupMask has a bit in common with this; not 0</translation>
    </message>
    <message>
        <source>255.255.255.255 for every adapter, the broadcast address of a network, or one camera&apos;s own</source>
        <translation>255.255.255.255 for every adapter, the broadcast address of a network, or one camera&apos;s own</translation>
    </message>
    <message>
        <source>Seconds to wait for answers; 0 asks for none</source>
        <translation>Seconds to wait for answers; 0 asks for none</translation>
    </message>
    <message>
        <source>When, in ticks of the cameras&apos; clocks (TimestampLatchValue)</source>
        <translation>When, in ticks of the cameras&apos; clocks (TimestampLatchValue)</translation>
    </message>
    <message>
        <source>Trigger many GigE Vision cameras at once (action commands)</source>
        <translation>Trigger many GigE Vision cameras at once (action commands)</translation>
    </message>
    <message>
        <source>Trigger now</source>
        <translation>Trigger now</translation>
    </message>
    <message>
        <source>Trigger at a time of the cameras&apos; synchronised clocks</source>
        <translation>Trigger at a time of the cameras&apos; synchronised clocks</translation>
    </message>
    <message>
        <source>Open cameras and tell which take action commands</source>
        <translation>Open cameras and tell which take action commands</translation>
    </message>
    <message>
        <source>Trying the way to the camera with test packets ...</source>
        <translation>Trying the way to the camera with test packets ...</translation>
    </message>
    <message>
        <source>%1: the way to the camera could not be tried: %2</source>
        <translation>%1: the way to the camera could not be tried: %2</translation>
    </message>
    <message>
        <source>Packets of up to %1 bytes arrive; the camera sends %2 (the adapter&apos;s limit is %3).</source>
        <translation>Packets of up to %1 bytes arrive; the camera sends %2 (the adapter&apos;s limit is %3).</translation>
    </message>
    <message>
        <source>No test packet arrives.</source>
        <translation>No test packet arrives.</translation>
    </message>
    <message>
        <source>Grabbing for %1 s ...</source>
        <translation>Grabbing for %1 s ...</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera.</source>
        <translation>%1 is no GigE Vision camera.</translation>
    </message>
    <message>
        <source>Opening %1 at %2 through %3 ...</source>
        <translation>Opening %1 at %2 through %3 ...</translation>
    </message>
    <message>
        <source>No images: %1</source>
        <translation>No images: %1</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>Note: %1</translation>
    </message>
    <message>
        <source>Ended early.</source>
        <translation>Ended early.</translation>
    </message>
    <message>
        <source>%1 images arrived, %2 incompletely.</source>
        <translation>%1 images arrived, %2 incompletely.</translation>
    </message>
    <message>
        <source>%1 does not tell its frame rate; give it with --rate.</source>
        <translation>%1 does not tell its frame rate; give it with --rate.</translation>
    </message>
    <message>
        <source>%1: the pause between packets cannot be set: %2</source>
        <translation>%1: the pause between packets cannot be set: %2</translation>
    </message>
    <message>
        <source>CAMERA</source>
        <translation>CAMERA</translation>
    </message>
    <message>
        <source>PACKET</source>
        <translation>PACKET</translation>
    </message>
    <message>
        <source>LINK %</source>
        <translation>LINK %</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>PAUSE</translation>
    </message>
    <message>
        <source>TICKS</source>
        <translation>TICKS</translation>
    </message>
    <message>
        <source>%1: %2 of %3 Mbit/s (%4 %), of which %5 % are kept free</source>
        <translation>%1: %2 of %3 Mbit/s (%4 %), of which %5 % are kept free</translation>
    </message>
    <message>
        <source>Everything fits; the pauses are set.</source>
        <translation>Everything fits; the pauses are set.</translation>
    </message>
    <message>
        <source>Everything fits; --apply sets the pauses.</source>
        <translation>Everything fits; --apply sets the pauses.</translation>
    </message>
    <message>
        <source>The cameras on %1 need %2 Mbit/s, but only %3 can be used: images will be lost. Lower the frame rates, make the images smaller, or use another adapter for some cameras.</source>
        <translation>The cameras on %1 need %2 Mbit/s, but only %3 can be used: images will be lost. Lower the frame rates, make the images smaller, or use another adapter for some cameras.</translation>
    </message>
    <message>
        <source>%1: lower the frame rate from %2 to %3</source>
        <translation>%1: lower the frame rate from %2 to %3</translation>
    </message>
    <message>
        <source>There is no plan for %1: %2</source>
        <translation>There is no plan for %1: %2</translation>
    </message>
    <message>
        <source>The link speed of %1 is not known; give it with --link-speed.</source>
        <translation>The link speed of %1 is not known; give it with --link-speed.</translation>
    </message>
    <message>
        <source>There is no GigE Vision camera to plan for.</source>
        <translation>There is no GigE Vision camera to plan for.</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unknown</translation>
    </message>
    <message>
        <source>ADAPTER</source>
        <translation>ADAPTER</translation>
    </message>
    <message>
        <source>LINK</source>
        <translation>LINK</translation>
    </message>
    <message>
        <source>CAMERAS</source>
        <translation>CAMERAS</translation>
    </message>
    <message>
        <source>No GigE Vision camera answers.</source>
        <translation>No GigE Vision camera answers.</translation>
    </message>
    <message>
        <source>No network adapter is searched for cameras.</source>
        <translation>No network adapter is searched for cameras.</translation>
    </message>
    <message>
        <source>%1: cameras in another subnet are not heard, for the system drops their answers (rp_filter is %2). To hear them: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</source>
        <translation>%1: cameras in another subnet are not heard, for the system drops their answers (rp_filter is %2). To hear them: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</translation>
    </message>
    <message>
        <source>Socket buffers: capped at %1 bytes (net.core.rmem_max).</source>
        <translation>Socket buffers: capped at %1 bytes (net.core.rmem_max).</translation>
    </message>
    <message>
        <source>Divide each adapter&apos;s link among its cameras: bandwidth of each, pause between packets</source>
        <translation>Divide each adapter&apos;s link among its cameras: bandwidth of each, pause between packets</translation>
    </message>
    <message>
        <source>Cameras; all of GigE Vision when none is named</source>
        <translation>Cameras; all of GigE Vision when none is named</translation>
    </message>
    <message>
        <source>Write the pauses into the cameras (GevSCPD)</source>
        <translation>Write the pauses into the cameras (GevSCPD)</translation>
    </message>
    <message>
        <source>Mbit/s of the link, where the adapter does not tell</source>
        <translation>Mbit/s of the link, where the adapter does not tell</translation>
    </message>
    <message>
        <source>Images per second of every camera, such as those of a trigger</source>
        <translation>Images per second of every camera, such as those of a trigger</translation>
    </message>
    <message>
        <source>Per cent of the link to keep free</source>
        <translation>Per cent of the link to keep free</translation>
    </message>
    <message>
        <source>Show network adapters and the cameras on them; plan bandwidth, find what stops images</source>
        <translation>Show network adapters and the cameras on them; plan bandwidth, find what stops images</translation>
    </message>
    <message>
        <source>Open a camera, try the way to it, grab for a moment and say what stops images</source>
        <translation>Open a camera, try the way to it, grab for a moment and say what stops images</translation>
    </message>
    <message>
        <source>How long to grab; 2 by default</source>
        <translation>How long to grab; 2 by default</translation>
    </message>
    <message>
        <source>Look into firmware packages and update cameras with them</source>
        <translation>Look into firmware packages and update cameras with them</translation>
    </message>
    <message>
        <source>The firmware package</source>
        <translation>The firmware package</translation>
    </message>
    <message>
        <source>List the updates of a package</source>
        <translation>List the updates of a package</translation>
    </message>
    <message>
        <source>List the updates that fit a camera, newest first</source>
        <translation>List the updates that fit a camera, newest first</translation>
    </message>
    <message>
        <source>Write an update into a camera</source>
        <translation>Write an update into a camera</translation>
    </message>
    <message>
        <source>The version of the update; the newest that fits by default</source>
        <translation>The version of the update; the newest that fits by default</translation>
    </message>
    <message>
        <source>Do not ask before a downgrade</source>
        <translation>Do not ask before a downgrade</translation>
    </message>
    <message>
        <source>Make a package of its description and its files</source>
        <translation>Make a package of its description and its files</translation>
    </message>
    <message>
        <source>The package&apos;s description, XML</source>
        <translation>The package&apos;s description, XML</translation>
    </message>
    <message>
        <source>VERSION</source>
        <translation>VERSION</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>DESCRIPTION</translation>
    </message>
    <message>
        <source>RELEASE NOTES</source>
        <translation>RELEASE NOTES</translation>
    </message>
    <message>
        <source>No update in %1 is for the camera %2.</source>
        <translation>No update in %1 is for the camera %2.</translation>
    </message>
    <message>
        <source>Several updates fit %1, and their versions cannot be compared; name one with --version (&apos;poolcli firmware match&apos; lists them).</source>
        <translation>Several updates fit %1, and their versions cannot be compared; name one with --version (&apos;poolcli firmware match&apos; lists them).</translation>
    </message>
    <message>
        <source>Several updates that fit %1 are equally new (%2 and %3); name one with --version.</source>
        <translation>Several updates that fit %1 are equally new (%2 and %3); name one with --version.</translation>
    </message>
    <message>
        <source>No update to version %1 fits %2; &apos;poolcli firmware match&apos; lists those that do.</source>
        <translation>No update to version %1 fits %2; &apos;poolcli firmware match&apos; lists those that do.</translation>
    </message>
    <message>
        <source>Several updates to version %1 fit %2; take a package that holds one of them only.</source>
        <translation>Several updates to version %1 fit %2; take a package that holds one of them only.</translation>
    </message>
    <message>
        <source>upgrade</source>
        <translation>upgrade</translation>
    </message>
    <message>
        <source>downgrade</source>
        <translation>downgrade</translation>
    </message>
    <message>
        <source>the same version again</source>
        <translation>the same version again</translation>
    </message>
    <message>
        <source>not known whether newer</source>
        <translation>not known whether newer</translation>
    </message>
    <message>
        <source>This may be a downgrade, and there is no terminal to ask on; agree with --yes.</source>
        <translation>This may be a downgrade, and there is no terminal to ask on; agree with --yes.</translation>
    </message>
    <message>
        <source>The camera would get an older version, or one that may be older. Go on? [y/N]</source>
        <translation>The camera would get an older version, or one that may be older. Go on? [y/N]</translation>
    </message>
    <message>
        <source>Nothing was changed.</source>
        <translation>Nothing was changed.</translation>
    </message>
    <message>
        <source>Interrupted: the update ends when the present step is done. Leave the camera switched on.</source>
        <translation>Interrupted: the update ends when the present step is done. Leave the camera switched on.</translation>
    </message>
    <message>
        <source>Still waiting for the end of the present step. Leave the camera switched on.</source>
        <translation>Still waiting for the end of the present step. Leave the camera switched on.</translation>
    </message>
    <message>
        <source>%1: firmware %2 -&gt; %3 (%4)</source>
        <translation>%1: firmware %2 -&gt; %3 (%4)</translation>
    </message>
    <message>
        <source>The update of %1 did not complete: %2</source>
        <translation>The update of %1 did not complete: %2</translation>
    </message>
    <message>
        <source>Nothing was written to the camera.</source>
        <translation>Nothing was written to the camera.</translation>
    </message>
    <message>
        <source>The camera has firmware %1.</source>
        <translation>The camera has firmware %1.</translation>
    </message>
    <message>
        <source>Which firmware the camera has is not known: switch it off and on, look for it with &apos;poolcli list&apos;, and update it again.</source>
        <translation>Which firmware the camera has is not known: switch it off and on, look for it with &apos;poolcli list&apos;, and update it again.</translation>
    </message>
    <message>
        <source>%1 was updated, but cannot be reached: %2</source>
        <translation>%1 was updated, but cannot be reached: %2</translation>
    </message>
    <message>
        <source>%1 has firmware %2 now.</source>
        <translation>%1 has firmware %2 now.</translation>
    </message>
    <message>
        <source>%1 was made.</source>
        <translation>%1 was made.</translation>
    </message>
    <message>
        <source>Checking the camera</source>
        <translation>Checking the camera</translation>
    </message>
    <message>
        <source>Reading the package</source>
        <translation>Reading the package</translation>
    </message>
    <message>
        <source>Writing a feature</source>
        <translation>Writing a feature</translation>
    </message>
    <message>
        <source>Executing a command</source>
        <translation>Executing a command</translation>
    </message>
    <message>
        <source>Checking a feature</source>
        <translation>Checking a feature</translation>
    </message>
    <message>
        <source>Uploading a file</source>
        <translation>Uploading a file</translation>
    </message>
    <message>
        <source>Restarting the camera</source>
        <translation>Restarting the camera</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Updating</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Estimated time: %1</source>
        <translation>Estimated time: %1</translation>
    </message>
</context>
</TS>
