<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="en">
<context>
    <name>Core::Plugin::CPluginManager</name>
    <message>
        <source>unknown error</source>
        <translation>알 수 없는 오류</translation>
    </message>
    <message>
        <source>The plugin folder &quot;%1&quot; cannot be read.</source>
        <translation>플러그인 폴더 &quot;%1&quot;을(를) 읽을 수 없습니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; was not started, because the plugin &quot;%2&quot; that it needs failed.</source>
        <translation>플러그인 &quot;%1&quot;은(는) 필요한 플러그인 &quot;%2&quot;이(가) 실패하여 시작되지 않았습니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: %2.</source>
        <translation>플러그인 &quot;%1&quot;을(를) 불러올 수 없습니다: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: its instance is not a plugin.</source>
        <translation>플러그인 &quot;%1&quot;을(를) 불러올 수 없습니다: 인스턴스가 플러그인이 아닙니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized.</source>
        <translation>플러그인 &quot;%1&quot;을(를) 초기화할 수 없습니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized: %2.</source>
        <translation>플러그인 &quot;%1&quot;을(를) 초기화할 수 없습니다: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start.</source>
        <translation>플러그인 &quot;%1&quot;이(가) 시작을 마칠 수 없습니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start: %2.</source>
        <translation>플러그인 &quot;%1&quot;이(가) 시작을 마칠 수 없습니다: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; failed while stopping: %2.</source>
        <translation>플러그인 &quot;%1&quot;이(가) 정지 중에 실패했습니다: %2.</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginMetadata</name>
    <message>
        <source>The plugin file &quot;%1&quot; does not exist.</source>
        <translation>플러그인 파일 &quot;%1&quot;이(가) 없습니다.</translation>
    </message>
    <message>
        <source>it has no plugin metadata</source>
        <translation>플러그인 메타데이터가 없습니다</translation>
    </message>
    <message>
        <source>its interface identifier is &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation>인터페이스 식별자가 &quot;%2&quot;이(가) 아니라 &quot;%1&quot;입니다</translation>
    </message>
    <message>
        <source>its metadata has no object &quot;MetaData&quot;</source>
        <translation>메타데이터에 &quot;MetaData&quot; 객체가 없습니다</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not true or false</source>
        <translation>메타데이터 항목 &quot;%1&quot;이(가) 참 또는 거짓이 아닙니다</translation>
    </message>
    <message>
        <source>its metadata has no name</source>
        <translation>메타데이터에 이름이 없습니다</translation>
    </message>
    <message>
        <source>its compatible version %1 is newer than its version %2</source>
        <translation>호환 버전 %1이(가) 버전 %2보다 최신입니다</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a list</source>
        <translation>메타데이터 항목 &quot;%1&quot;이(가) 목록이 아닙니다</translation>
    </message>
    <message>
        <source>dependency number %1 of its metadata has no name</source>
        <translation>메타데이터의 %1번 의존성에 이름이 없습니다</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a text</source>
        <translation>메타데이터 항목 &quot;%1&quot;이(가) 텍스트가 아닙니다</translation>
    </message>
    <message>
        <source>its metadata has no entry &quot;%1&quot;</source>
        <translation>메타데이터에 항목 &quot;%1&quot;이(가) 없습니다</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata, &quot;%2&quot;, is not a version</source>
        <translation>메타데이터 항목 &quot;%1&quot;의 &quot;%2&quot;은(는) 버전이 아닙니다</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not a plugin that can be used: %2.</source>
        <translation>파일 &quot;%1&quot;은(는) 사용할 수 있는 플러그인이 아닙니다: %2.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3.</source>
        <translation>플러그인 &quot;%1&quot;(%2)을(를) 사용할 수 없습니다: %3.</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginResolver</name>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3 has the same name.</source>
        <translation>플러그인 &quot;%1&quot;(%2)을(를) 사용할 수 없습니다: %3의 이름이 같습니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, which is missing.</source>
        <translation>플러그인 &quot;%1&quot;에는 플러그인 &quot;%2&quot;의 버전 %3이(가) 필요하지만 없습니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, but that one has version %4, compatible down to %5.</source>
        <translation>플러그인 &quot;%1&quot;에는 플러그인 &quot;%2&quot;의 버전 %3이(가) 필요하지만 그 버전은 %4이며 %5까지 호환됩니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot;, which cannot be used.</source>
        <translation>플러그인 &quot;%1&quot;에 필요한 플러그인 &quot;%2&quot;을(를) 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; depends on itself: %2.</source>
        <translation>플러그인 &quot;%1&quot;이(가) 자기 자신에 의존합니다: %2.</translation>
    </message>
</context>
<context>
    <name>HostKit</name>
    <message>
        <source>There is no camera called &quot;%1&quot;.</source>
        <translation>&quot;%1&quot;(이)라는 카메라가 없습니다.</translation>
    </message>
    <message>
        <source>Several cameras are called &quot;%1&quot;: %2.</source>
        <translation>&quot;%1&quot;(이)라는 카메라가 여러 대 있습니다: %2.</translation>
    </message>
    <message>
        <source>No plugin offers the service %1.</source>
        <translation>서비스 %1을(를) 제공하는 플러그인이 없습니다.</translation>
    </message>
    <message>
        <source>The pixel format 0x%1 cannot be shown.</source>
        <translation>픽셀 형식 0x%1은(는) 표시할 수 없습니다.</translation>
    </message>
    <message>
        <source>An image of %1 x %2 pixels cannot be shown.</source>
        <translation>%1 x %2 픽셀의 이미지는 표시할 수 없습니다.</translation>
    </message>
    <message>
        <source>The image holds %1 bytes where its %2 x %3 pixels of %4 need %5.</source>
        <translation>이미지는 %1바이트이지만 %4의 %2 x %3 픽셀에는 %5바이트가 필요합니다.</translation>
    </message>
    <message>
        <source>There is no image.</source>
        <translation>이미지가 없습니다.</translation>
    </message>
    <message>
        <source>There is no interface called &quot;%1&quot;.</source>
        <translation>&quot;%1&quot;(이)라는 인터페이스가 없습니다.</translation>
    </message>
    <message>
        <source>Several interfaces are called &quot;%1&quot;: %2.</source>
        <translation>&quot;%1&quot;(이)라는 인터페이스가 여러 개 있습니다: %2.</translation>
    </message>
    <message>
        <source>The image is compressed, and the camera did not tell how.</source>
        <translation>이미지가 압축되어 있지만 카메라가 압축 방식을 알려 주지 않았습니다.</translation>
    </message>
    <message>
        <source>The camera could not make the image as small as it was told to.</source>
        <translation>카메라가 이미지를 지정된 크기로 줄이지 못했습니다.</translation>
    </message>
    <message>
        <source>Bytes are missing at the end of the compressed image.</source>
        <translation>압축된 이미지의 끝에서 바이트가 누락되었습니다.</translation>
    </message>
    <message>
        <source>The compressed image is damaged.</source>
        <translation>압축된 이미지가 손상되었습니다.</translation>
    </message>
    <message>
        <source>The image is compressed in a way that is not known here.</source>
        <translation>이미지가 알 수 없는 방식으로 압축되었습니다.</translation>
    </message>
    <message>
        <source>The image was compressed under other settings than those that the camera told.</source>
        <translation>이미지가 카메라가 알려 준 것과 다른 설정으로 압축되었습니다.</translation>
    </message>
    <message>
        <source>The compressed image cannot be decoded (status %1).</source>
        <translation>압축된 이미지를 디코딩할 수 없습니다(상태 %1).</translation>
    </message>
    <message>
        <source>The camera&apos;s address %1 is in another subnet than the network adapter %2 (%3). Give the camera an address of the adapter&apos;s subnet, or the adapter one of the camera&apos;s.</source>
        <translation>카메라 주소 %1이(가) 네트워크 어댑터 %2 (%3)와 다른 서브넷에 있습니다. 카메라에 어댑터 서브넷의 주소를 주거나 어댑터에 카메라 서브넷의 주소를 주십시오.</translation>
    </message>
    <message>
        <source>Another application controls the camera: %1 End it there, or watch the camera with &apos;poolcli monitor&apos;.</source>
        <translation>다른 응용 프로그램이 카메라를 제어하고 있습니다: %1 그쪽에서 종료하거나 &apos;poolcli monitor&apos;로 카메라를 지켜보십시오.</translation>
    </message>
    <message>
        <source>The camera is seen but answers no commands. Another device may have the same address %1, or a firewall stops UDP port 3956.</source>
        <translation>카메라가 보이지만 명령에 응답하지 않습니다. 다른 장치가 같은 주소 %1을(를) 쓰거나 방화벽이 UDP 포트 3956을 막고 있을 수 있습니다.</translation>
    </message>
    <message>
        <source>The camera could not be opened: %1</source>
        <translation>카메라를 열 수 없습니다: %1</translation>
    </message>
    <message>
        <source>The connection to the camera was lost: check cable, power and switch.</source>
        <translation>카메라와의 연결이 끊어졌습니다. 케이블, 전원, 스위치를 확인하십시오.</translation>
    </message>
    <message>
        <source>The camera does not start grabbing: %1</source>
        <translation>카메라가 영상 획득을 시작하지 않습니다: %1</translation>
    </message>
    <message>
        <source>No test packet arrives, and the camera waits for a trigger. Send one, or switch TriggerMode off, to see whether images arrive.</source>
        <translation>테스트 패킷이 도착하지 않으며 카메라는 트리거를 기다리고 있습니다. 영상이 도착하는지 보려면 트리거를 보내거나 TriggerMode를 끄십시오.</translation>
    </message>
    <message>
        <source>Commands are answered, so packets are sent, but none arrives, neither test packets nor images. Does a firewall stop them? Let UDP packets from %1 through on the adapter %2.</source>
        <translation>명령에는 응답하므로 패킷은 보내지지만 테스트 패킷도 영상도 도착하지 않습니다. 방화벽이 막고 있습니까? 어댑터 %2에서 %1의 UDP 패킷을 허용하십시오.</translation>
    </message>
    <message>
        <source>The packets of %1 bytes are too large for the way to this computer, which carries %2. Set GevSCPSPacketSize to %2, leave it alone, or set up jumbo frames on every switch and adapter.</source>
        <translation>%1바이트 패킷은 이 컴퓨터까지의 경로에 너무 큽니다. 경로는 %2바이트까지 나릅니다. GevSCPSPacketSize를 %2(으)로 하거나 그대로 두거나, 모든 스위치와 어댑터에서 점보 프레임을 설정하십시오.</translation>
    </message>
    <message>
        <source>Packets arrive, but none of %1 images was complete.</source>
        <translation>패킷은 도착하지만 영상 %1개 중 완전한 것이 없습니다.</translation>
    </message>
    <message>
        <source>Test packets arrive, but the camera sends no image: does it wait for a trigger?</source>
        <translation>테스트 패킷은 도착하지만 카메라가 영상을 보내지 않습니다. 트리거를 기다리고 있습니까?</translation>
    </message>
    <message>
        <source>The socket buffer is capped at %1 bytes, and images of this size need %2: images may be lost. Raise the limit with: sysctl -w net.core.rmem_max=%2</source>
        <translation>소켓 버퍼가 %1바이트로 제한되어 있으나 이 크기의 영상에는 %2바이트가 필요합니다. 영상을 잃을 수 있습니다. 다음 명령으로 한도를 올리십시오: sysctl -w net.core.rmem_max=%2</translation>
    </message>
    <message>
        <source>Only packets of up to %1 bytes arrive, though the adapter takes %2: a switch on the way, or the camera, does not do jumbo frames. Images cost more processor time.</source>
        <translation>어댑터는 %2바이트까지 받지만 %1바이트까지의 패킷만 도착합니다. 도중의 스위치나 카메라가 점보 프레임을 지원하지 않습니다. 영상에 프로세서 시간이 더 듭니다.</translation>
    </message>
    <message>
        <source>%1 of %2 images were incomplete: packets are lost. With several cameras on the adapter, let &apos;poolcli network plan --apply&apos; set pauses between packets.</source>
        <translation>영상 %2개 중 %1개가 불완전했습니다. 패킷이 손실됩니다. 어댑터에 카메라가 여러 대이면 &apos;poolcli network plan --apply&apos;로 패킷 사이의 쉼을 설정하십시오.</translation>
    </message>
</context>
<context>
    <name>ParameterCollection::CParameterCollection</name>
    <message>
        <source>No node map has been announced under %1.</source>
        <translation>%1에 등록된 노드 맵이 없습니다.</translation>
    </message>
    <message>
        <source>The node map under %1 is being detached.</source>
        <translation>%1의 노드 맵을 분리하는 중입니다.</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CDataProcessingGraph</name>
    <message>
        <source>A null node cannot be added to the graph.</source>
        <translation>빈 노드는 그래프에 추가할 수 없습니다.</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; is in the graph already.</source>
        <translation>노드 &quot;%1&quot;은(는) 이미 그래프에 있습니다.</translation>
    </message>
    <message>
        <source>The graph has a node &quot;%1&quot; for &quot;%2&quot; already.</source>
        <translation>그래프에 &quot;%2&quot;의 노드 &quot;%1&quot;이(가) 이미 있습니다.</translation>
    </message>
    <message>
        <source>A node to be connected is not in the graph.</source>
        <translation>연결할 노드가 그래프에 없습니다.</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no input port %2.</source>
        <translation>노드 &quot;%1&quot;에 입력 포트 %2이(가) 없습니다.</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no output port %2.</source>
        <translation>노드 &quot;%1&quot;에 출력 포트 %2이(가) 없습니다.</translation>
    </message>
    <message>
        <source>Input port %1 of the node &quot;%2&quot; is connected already.</source>
        <translation>노드 &quot;%2&quot;의 입력 포트 %1은(는) 이미 연결되어 있습니다.</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; allows only one connection.</source>
        <translation>노드 &quot;%2&quot;의 출력 포트 %1은(는) 연결을 하나만 허용합니다.</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; gives &quot;%3&quot;, but input port %4 of the node &quot;%5&quot; takes &quot;%6&quot;.</source>
        <translation>노드 &quot;%2&quot;의 출력 포트 %1은(는) &quot;%3&quot;을(를) 내보내지만 노드 &quot;%5&quot;의 입력 포트 %4은(는) &quot;%6&quot;을(를) 받습니다.</translation>
    </message>
    <message>
        <source>Connecting the node &quot;%1&quot; to the node &quot;%2&quot; would close a circle.</source>
        <translation>노드 &quot;%1&quot;을(를) 노드 &quot;%2&quot;에 연결하면 순환이 생깁니다.</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>알 수 없는 오류입니다.</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CNodeRegistry</name>
    <message>
        <source>There is no kind of node with the name &quot;%1&quot;.</source>
        <translation>&quot;%1&quot;(이)라는 종류의 노드가 없습니다.</translation>
    </message>
</context>
<context>
    <name>PoolCli</name>
    <message>
        <source>No camera found.</source>
        <translation>카메라를 찾을 수 없습니다.</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>이름</translation>
    </message>
    <message>
        <source>MODEL</source>
        <translation>모델</translation>
    </message>
    <message>
        <source>SERIAL</source>
        <translation>일련 번호</translation>
    </message>
    <message>
        <source>USER NAME</source>
        <translation>사용자 이름</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>유형</translation>
    </message>
    <message>
        <source>ADDRESS</source>
        <translation>주소</translation>
    </message>
    <message>
        <source>Watching; Ctrl-C ends.</source>
        <translation>감시 중입니다. Ctrl-C로 끝냅니다.</translation>
    </message>
    <message>
        <source>PROPERTY</source>
        <translation>속성</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>값</translation>
    </message>
    <message>
        <source>%1 does not start grabbing: %2</source>
        <translation>%1이(가) 취득을 시작하지 않습니다: %2</translation>
    </message>
    <message>
        <source>%1: %2 images, %3 failed, %4 missing, %5 fps, %6 MB/s</source>
        <translation>%1: 이미지 %2, 실패 %3, 누락 %4, %5 fps, %6 MB/s</translation>
    </message>
    <message>
        <source> (connection lost)</source>
        <translation> (연결이 끊어짐)</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; 'poolcli --help' lists them.</source>
        <translation>'%1' 명령이 없습니다. 'poolcli --help'로 목록을 볼 수 있습니다.</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1을(를) 쓸 수 없습니다: %2</translation>
    </message>
    <message>
        <source>%1: picture in %2</source>
        <translation>%1: 그림은 %2</translation>
    </message>
    <message>
        <source>%1 gave no image: %2</source>
        <translation>%1에서 이미지를 받지 못했습니다: %2</translation>
    </message>
    <message>
        <source>none arrived in time.</source>
        <translation>제시간에 도착하지 않았습니다.</translation>
    </message>
    <message>
        <source>%1 x %2 pixels in %3</source>
        <translation>%1 x %2 픽셀: %3</translation>
    </message>
    <message>
        <source>%1 has no feature %2.</source>
        <translation>%1에 기능 %2이(가) 없습니다.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1을(를) 읽을 수 없습니다: %2</translation>
    </message>
    <message>
        <source>There is no feature %1.</source>
        <translation>기능 %1이(가) 없습니다.</translation>
    </message>
    <message>
        <source>%1 is no command; give a value as %1=VALUE.</source>
        <translation>%1은(는) 명령이 아닙니다. %1=값 형식으로 값을 지정하십시오.</translation>
    </message>
    <message>
        <source>%1 was refused: %2</source>
        <translation>%1이(가) 거부되었습니다: %2</translation>
    </message>
    <message>
        <source>%1 done</source>
        <translation>%1 완료</translation>
    </message>
    <message>
        <source>There is no camera.</source>
        <translation>카메라가 없습니다.</translation>
    </message>
    <message>
        <source>There are %1 cameras; name one of them.</source>
        <translation>카메라가 %1대 있습니다. 하나를 지정하십시오.</translation>
    </message>
    <message>
        <source>%1 could not be opened: %2</source>
        <translation>%1을(를) 열 수 없습니다: %2</translation>
    </message>
    <message>
        <source>it is in exclusive use.</source>
        <translation>독점 사용 중입니다.</translation>
    </message>
    <message>
        <source>%1 has no parameters.</source>
        <translation>%1에 매개변수가 없습니다.</translation>
    </message>
    <message>
        <source>%1: the connection to the camera was lost.</source>
        <translation>%1: 카메라와의 연결이 끊어졌습니다.</translation>
    </message>
    <message>
        <source>No interface found.</source>
        <translation>인터페이스를 찾을 수 없습니다.</translation>
    </message>
    <message>
        <source>No feature to show.</source>
        <translation>표시할 기능이 없습니다.</translation>
    </message>
    <message>
        <source>No device on this interface.</source>
        <translation>이 인터페이스에 장치가 없습니다.</translation>
    </message>
    <message>
        <source>ACCESS</source>
        <translation>접근</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>식별자</translation>
    </message>
    <message>
        <source>%1 is on no interface that could be opened; &apos;poolcli interfaces&apos; lists those.</source>
        <translation>%1은(는) 열 수 있는 인터페이스에 없습니다. &apos;poolcli interfaces&apos;가 목록을 보여 줍니다.</translation>
    </message>
    <message>
        <source>, compressed to %1% (%2% to %3%), %4 lossless, %5 lossy, %6 not decodable</source>
        <translation>, %1%로 압축(%2%~%3%), 무손실 %4, 손실 %5, 디코딩 불가 %6</translation>
    </message>
    <message>
        <source>, compressed, %1 not decodable</source>
        <translation>, 압축됨, 디코딩 불가 %1</translation>
    </message>
    <message>
        <source>%1: none of its compressed images can be decoded.</source>
        <translation>%1: 압축된 이미지를 하나도 디코딩할 수 없습니다.</translation>
    </message>
    <message>
        <source>%1 is on no interface: an emulated camera is on one when its data name it (&quot;interface&quot;).</source>
        <translation>%1은(는) 어느 인터페이스에도 없습니다. 에뮬레이션 카메라의 인터페이스는 데이터의 &quot;interface&quot;로 지정합니다.</translation>
    </message>
    <message>
        <source>The camera has no chunk data.</source>
        <translation>카메라에 청크 데이터가 없습니다.</translation>
    </message>
    <message>
        <source>The camera has no chunk %1; it has: %2.</source>
        <translation>카메라에 청크 %1이(가) 없습니다. 사용 가능: %2.</translation>
    </message>
    <message>
        <source>The chunk settings could not be restored: %1</source>
        <translation>청크 설정을 복원할 수 없습니다: %1</translation>
    </message>
    <message>
        <source>no chunk data</source>
        <translation>청크 데이터 없음</translation>
    </message>
    <message>
        <source>%1 sent images without chunk data.</source>
        <translation>%1이(가) 청크 데이터 없이 이미지를 보냈습니다.</translation>
    </message>
    <message>
        <source>The camera reports no events.</source>
        <translation>카메라가 이벤트를 알리지 않습니다.</translation>
    </message>
    <message>
        <source>The camera&apos;s events cannot be received; the log says why.</source>
        <translation>카메라의 이벤트를 받을 수 없습니다. 이유는 로그에 있습니다.</translation>
    </message>
    <message>
        <source>The camera has no event %1; it has: %2.</source>
        <translation>카메라에 이벤트 %1이(가) 없습니다. 사용 가능: %2.</translation>
    </message>
    <message>
        <source>The event settings could not be restored: %1</source>
        <translation>이벤트 설정을 복원할 수 없습니다: %1</translation>
    </message>
    <message>
        <source>%1 did not start: %2</source>
        <translation>%1이(가) 시작되지 않았습니다: %2</translation>
    </message>
    <message>
        <source>The camera has no features that show the event %1.</source>
        <translation>카메라에 이벤트 %1을(를) 보여 주는 기능이 없습니다.</translation>
    </message>
    <message>
        <source>The camera has no features that show its events.</source>
        <translation>카메라에 이벤트를 보여 주는 기능이 없습니다.</translation>
    </message>
    <message>
        <source>Waiting for %1; Ctrl-C ends.</source>
        <translation>%1을(를) 기다리는 중입니다. Ctrl-C로 끝냅니다.</translation>
    </message>
    <message>
        <source>%1 events came faster than they could be handled and were dropped.</source>
        <translation>이벤트 %1개가 처리 속도보다 빨리 도착하여 버려졌습니다.</translation>
    </message>
    <message>
        <source>Show what a camera reports by itself</source>
        <translation>카메라가 스스로 알리는 것(이벤트)을 표시합니다</translation>
    </message>
    <message>
        <source>Events, such as ExposureEnd; all that the camera has when none is named. They are switched on, and at the end as they were</source>
        <translation>ExposureEnd 같은 이벤트. 지정하지 않으면 카메라의 모든 이벤트. 켜고 끝에 원래대로 되돌립니다</translation>
    </message>
    <message>
        <source>Stop after that many events</source>
        <translation>이벤트가 이 수에 이르면 중지합니다</translation>
    </message>
    <message>
        <source>Grab meanwhile: most events are of images</source>
        <translation>그동안 그랩합니다. 대부분의 이벤트는 이미지에 관한 것입니다</translation>
    </message>
    <message>
        <source>NAME=VALUE to write, or NAME of a command to execute, when events are on</source>
        <translation>이벤트를 켠 뒤에 쓸 NAME=VALUE 또는 실행할 명령의 NAME</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera; action commands do not reach it.</source>
        <translation>%1은(는) GigE Vision 카메라가 아니므로 액션 명령이 전달되지 않습니다.</translation>
    </message>
    <message>
        <source>The action command could not be sent to %1: perhaps no network adapter in use leads there. The reason is in the debug log (QT_LOGGING_RULES=&quot;default.debug=true&quot;).</source>
        <translation>액션 명령을 %1(으)로 보낼 수 없습니다. 사용 중인 네트워크 어댑터가 그곳으로 연결되지 않았을 수 있습니다. 이유는 디버그 로그에 있습니다 (QT_LOGGING_RULES=&quot;default.debug=true&quot;).</translation>
    </message>
    <message>
        <source>Sent to %1; no answers asked for.</source>
        <translation>%1(으)로 보냈습니다. 응답은 요청하지 않았습니다.</translation>
    </message>
    <message>
        <source>ANSWER</source>
        <translation>응답</translation>
    </message>
    <message>
        <source>silent</source>
        <translation>무응답</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>거부됨</translation>
    </message>
    <message>
        <source>accepted</source>
        <translation>수락됨</translation>
    </message>
    <message>
        <source>Cameras refused the action command. Their reasons are in the debug log (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;).</source>
        <translation>액션 명령을 거부한 카메라가 있습니다. 이유는 디버그 로그에 있습니다 (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;).</translation>
    </message>
    <message>
        <source>Cameras stayed silent: no application has them open, their keys or masks do not fit, or the command or its answer was lost.</source>
        <translation>응답하지 않은 카메라가 있습니다. 카메라를 연 응용 프로그램이 없거나, 키나 마스크가 맞지 않거나, 명령 또는 응답이 손실되었습니다.</translation>
    </message>
    <message>
        <source>No camera answered the action command: no application has one open, or their keys or masks do not fit.</source>
        <translation>액션 명령에 응답한 카메라가 없습니다. 카메라를 연 응용 프로그램이 없거나 키나 마스크가 맞지 않습니다.</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>액션</translation>
    </message>
    <message>
        <source>SCHEDULED</source>
        <translation>예약</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>예</translation>
    </message>
    <message>
        <source>no</source>
        <translation>아니요</translation>
    </message>
    <message>
        <source>Print JSON</source>
        <translation>JSON으로 출력합니다</translation>
    </message>
    <message>
        <source>Seconds to wait for cameras to be found</source>
        <translation>카메라를 찾을 때까지 기다리는 시간(초)</translation>
    </message>
    <message>
        <source>User name, serial number, vendor-model-serial or full name; may be left out when there is only one</source>
        <translation>사용자 이름, 일련 번호, 공급업체-모델-일련 번호 또는 전체 이름. 한 대뿐이면 생략할 수 있습니다</translation>
    </message>
    <message>
        <source>Only features whose name holds this text</source>
        <translation>이름에 이 텍스트가 포함된 기능만</translation>
    </message>
    <message>
        <source>Beginner, Expert, Guru or Invisible</source>
        <translation>Beginner, Expert, Guru 또는 Invisible 중 하나</translation>
    </message>
    <message>
        <source>Show a camera&apos;s features as a tree, with values</source>
        <translation>카메라의 기능을 값과 함께 트리로 표시합니다</translation>
    </message>
    <message>
        <source>Only the node map of: camera, instant (the SDK&apos;s camera object), stream, tl (transport layer), event (event grabber), interface (that the camera is on); all shows every one of them</source>
        <translation>다음 노드 맵만: camera, instant(SDK의 카메라 개체), stream, tl(전송 계층), event(이벤트 그래버), interface(카메라가 연결된 인터페이스). all은 모두 표시합니다</translation>
    </message>
    <message>
        <source>Read features</source>
        <translation>기능을 읽습니다</translation>
    </message>
    <message>
        <source>The camera</source>
        <translation>카메라</translation>
    </message>
    <message>
        <source>Names, such as ExposureTime, @StreamGrabber0/PayloadSize or @Interface/InterfaceID</source>
        <translation>이름. 예: ExposureTime, @StreamGrabber0/PayloadSize, @Interface/InterfaceID</translation>
    </message>
    <message>
        <source>Write features and execute commands</source>
        <translation>기능에 쓰고 명령을 실행합니다</translation>
    </message>
    <message>
        <source>NAME=VALUE writes, NAME executes a command</source>
        <translation>NAME=VALUE는 쓰기, NAME은 명령 실행</translation>
    </message>
    <message>
        <source>Grab from one, several or all cameras at once</source>
        <translation>한 대, 여러 대 또는 모든 카메라에서 동시에 수집합니다</translation>
    </message>
    <message>
        <source>Cameras; all when none is named</source>
        <translation>카메라. 지정하지 않으면 모두</translation>
    </message>
    <message>
        <source>Stop after that many images of each camera</source>
        <translation>각 카메라의 이미지가 이 수에 이르면 중지합니다</translation>
    </message>
    <message>
        <source>Stop after that time; without this and without -n, Ctrl-C ends</source>
        <translation>이 시간이 지나면 중지합니다. 이것도 -n도 없으면 Ctrl-C로 끝냅니다</translation>
    </message>
    <message>
        <source>NAME=VALUE to write before grabbing</source>
        <translation>수집 전에 쓸 NAME=VALUE</translation>
    </message>
    <message>
        <source>CAMERA NAME=VALUE: the same for one of the cameras</source>
        <translation>CAMERA NAME=VALUE: 카메라 한 대에만 같은 작업을 합니다</translation>
    </message>
    <message>
        <source>Folder for one PNG of each camera&apos;s last image</source>
        <translation>각 카메라의 마지막 이미지를 PNG로 저장할 폴더</translation>
    </message>
    <message>
        <source>Take one image and write it as PNG (16 bits for deep formats)</source>
        <translation>이미지를 한 장 찍어 PNG로 저장합니다(고심도 형식은 16비트)</translation>
    </message>
    <message>
        <source>The file; by default model-serial.png</source>
        <translation>파일. 기본값은 모델-일련 번호.png</translation>
    </message>
    <message>
        <source>Seconds to wait for the image</source>
        <translation>이미지를 기다리는 시간(초)</translation>
    </message>
    <message>
        <source>Grab from one camera and print its statistics every second</source>
        <translation>카메라 한 대에서 수집하며 통계를 매초 출력합니다</translation>
    </message>
    <message>
        <source>Watch a camera that another application controls, without touching it</source>
        <translation>다른 애플리케이션이 제어하는 카메라를 건드리지 않고 감시합니다</translation>
    </message>
    <message>
        <source>Stop after that many images</source>
        <translation>이미지가 이 수에 이르면 중지합니다</translation>
    </message>
    <message>
        <source>Stop after that time; 5 by default</source>
        <translation>이 시간이 지나면 중지합니다. 기본값은 5</translation>
    </message>
    <message>
        <source>Grab with chunk data and show each image&apos;s values</source>
        <translation>청크 데이터와 함께 수집하며 각 이미지의 값을 표시합니다</translation>
    </message>
    <message>
        <source>Stop after that many images; 10 by default</source>
        <translation>이미지가 이 수에 이르면 중지합니다. 기본값은 10</translation>
    </message>
    <message>
        <source>Stop after that time</source>
        <translation>이 시간이 지나면 중지합니다</translation>
    </message>
    <message>
        <source>Only these chunks, with commas between, such as Timestamp,Gain; all that the camera has by default. Settings are restored at the end</source>
        <translation>이 청크만, 쉼표로 구분. 예: Timestamp,Gain. 기본값은 카메라의 모든 청크. 끝나면 설정을 되돌립니다</translation>
    </message>
    <message>
        <source>List the cameras that can be found</source>
        <translation>찾을 수 있는 카메라를 나열합니다</translation>
    </message>
    <message>
        <source>Show cameras coming and going, until Ctrl-C</source>
        <translation>Ctrl-C를 누를 때까지 카메라의 연결과 분리를 표시합니다</translation>
    </message>
    <message>
        <source>End after that time</source>
        <translation>이 시간이 지나면 끝냅니다</translation>
    </message>
    <message>
        <source>Show all that discovery tells of one camera</source>
        <translation>검색으로 알 수 있는 카메라 한 대의 모든 정보를 표시합니다</translation>
    </message>
    <message>
        <source>List the interfaces; with a name: its features and the devices on it</source>
        <translation>인터페이스를 나열합니다. 이름을 지정하면 그 기능과 연결된 장치를 표시합니다</translation>
    </message>
    <message>
        <source>Identifier, name or full name</source>
        <translation>식별자, 이름 또는 전체 이름</translation>
    </message>
    <message>
        <source>Find, open and use cameras through the CameraPool plugin</source>
        <translation>CameraPool 플러그인으로 카메라를 찾고 열고 사용합니다</translation>
    </message>
    <message>
        <source>Language of messages: en, ja, zh or ko</source>
        <translation>메시지 언어: en, ja, zh 또는 ko</translation>
    </message>
    <message>
        <source>Exit codes: 0 done, 1 the camera or the plugin refused (the reason is on stderr), 2 wrong usage.</source>
        <translation>종료 코드: 0 완료, 1 카메라 또는 플러그인이 거부함(이유는 stderr), 2 잘못된 사용.</translation>
    </message>
    <message>
        <source>Show this help and end</source>
        <translation>이 도움말을 표시하고 끝냅니다</translation>
    </message>
    <message>
        <source>Show the version and end</source>
        <translation>버전을 표시하고 끝냅니다</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>사용법</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>옵션</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>옵션</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>인수</translation>
    </message>
    <message>
        <source>SUBCOMMAND</source>
        <translation>명령</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>명령</translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>필수</translation>
    </message>
    <message>
        <source>Cameras that must take it; without any, all that are found are listed</source>
        <translation>명령을 받아야 하는 카메라. 지정하지 않으면 찾은 카메라를 모두 나열합니다</translation>
    </message>
    <message>
        <source>ActionDeviceKey of the cameras; 0x... is hexadecimal</source>
        <translation>카메라의 ActionDeviceKey. 0x...는 16진수</translation>
    </message>
    <message>
        <source>ActionGroupKey of one of their action signals</source>
        <translation>동작 신호 중 하나의 ActionGroupKey</translation>
    </message>
    <message>
        <source>Signals whose ActionGroupMask has a bit in common with this; not 0</source>
        <translation>ActionGroupMask가 이 값과 공통 비트를 갖는 신호. 0은 안 됨</translation>
    </message>
    <message>
        <source>255.255.255.255 for every adapter, the broadcast address of a network, or one camera&apos;s own</source>
        <translation>255.255.255.255는 모든 어댑터. 네트워크의 브로드캐스트 주소나 카메라 한 대의 주소도 가능</translation>
    </message>
    <message>
        <source>Seconds to wait for answers; 0 asks for none</source>
        <translation>응답을 기다리는 시간(초). 0은 응답을 요청하지 않음</translation>
    </message>
    <message>
        <source>When, in ticks of the cameras&apos; clocks (TimestampLatchValue)</source>
        <translation>시각. 카메라 시계의 틱 단위(TimestampLatchValue)</translation>
    </message>
    <message>
        <source>Trigger many GigE Vision cameras at once (action commands)</source>
        <translation>여러 GigE Vision 카메라를 동시에 트리거합니다(동작 명령)</translation>
    </message>
    <message>
        <source>Trigger now</source>
        <translation>지금 트리거합니다</translation>
    </message>
    <message>
        <source>Trigger at a time of the cameras&apos; synchronised clocks</source>
        <translation>카메라의 동기화된 시계의 시각에 트리거합니다</translation>
    </message>
    <message>
        <source>Open cameras and tell which take action commands</source>
        <translation>카메라를 열고 동작 명령을 받는 카메라를 알려 줍니다</translation>
    </message>
    <message>
        <source>Trying the way to the camera with test packets ...</source>
        <translation>테스트 패킷으로 카메라까지의 경로를 시험하는 중 ...</translation>
    </message>
    <message>
        <source>%1: the way to the camera could not be tried: %2</source>
        <translation>%1: 카메라까지의 경로를 시험할 수 없습니다: %2</translation>
    </message>
    <message>
        <source>Packets of up to %1 bytes arrive; the camera sends %2 (the adapter&apos;s limit is %3).</source>
        <translation>%1바이트까지의 패킷이 도착합니다. 카메라는 %2바이트로 보냅니다(어댑터 한도 %3).</translation>
    </message>
    <message>
        <source>No test packet arrives.</source>
        <translation>테스트 패킷이 도착하지 않습니다.</translation>
    </message>
    <message>
        <source>Grabbing for %1 s ...</source>
        <translation>%1초 동안 영상을 획득하는 중 ...</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera.</source>
        <translation>%1은(는) GigE Vision 카메라가 아닙니다.</translation>
    </message>
    <message>
        <source>Opening %1 at %2 through %3 ...</source>
        <translation>%3을(를) 통해 %2의 %1을(를) 여는 중 ...</translation>
    </message>
    <message>
        <source>No images: %1</source>
        <translation>영상 없음: %1</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>참고: %1</translation>
    </message>
    <message>
        <source>Ended early.</source>
        <translation>도중에 끝났습니다.</translation>
    </message>
    <message>
        <source>%1 images arrived, %2 incompletely.</source>
        <translation>영상 %1개가 도착했고 그중 %2개가 불완전했습니다.</translation>
    </message>
    <message>
        <source>%1 does not tell its frame rate; give it with --rate.</source>
        <translation>%1이(가) 프레임 속도를 알려 주지 않습니다. --rate로 지정하십시오.</translation>
    </message>
    <message>
        <source>%1: the pause between packets cannot be set: %2</source>
        <translation>%1: 패킷 사이의 쉼을 설정할 수 없습니다: %2</translation>
    </message>
    <message>
        <source>CAMERA</source>
        <translation>카메라</translation>
    </message>
    <message>
        <source>PACKET</source>
        <translation>패킷</translation>
    </message>
    <message>
        <source>LINK %</source>
        <translation>링크 %</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>쉼</translation>
    </message>
    <message>
        <source>TICKS</source>
        <translation>틱</translation>
    </message>
    <message>
        <source>%1: %2 of %3 Mbit/s (%4 %), of which %5 % are kept free</source>
        <translation>%1: %3 Mbit/s 중 %2 Mbit/s (%4 %), 그중 %5 %는 비워 둡니다</translation>
    </message>
    <message>
        <source>Everything fits; the pauses are set.</source>
        <translation>모두 들어갑니다. 쉼을 설정했습니다.</translation>
    </message>
    <message>
        <source>Everything fits; --apply sets the pauses.</source>
        <translation>모두 들어갑니다. --apply로 쉼을 설정합니다.</translation>
    </message>
    <message>
        <source>The cameras on %1 need %2 Mbit/s, but only %3 can be used: images will be lost. Lower the frame rates, make the images smaller, or use another adapter for some cameras.</source>
        <translation>%1의 카메라에는 %2 Mbit/s가 필요하지만 %3만 쓸 수 있습니다. 영상을 잃게 됩니다. 프레임 속도를 낮추거나 영상을 줄이거나 일부 카메라에 다른 어댑터를 쓰십시오.</translation>
    </message>
    <message>
        <source>%1: lower the frame rate from %2 to %3</source>
        <translation>%1: 프레임 속도를 %2에서 %3(으)로 낮추십시오</translation>
    </message>
    <message>
        <source>There is no plan for %1: %2</source>
        <translation>%1의 계획을 세울 수 없습니다: %2</translation>
    </message>
    <message>
        <source>The link speed of %1 is not known; give it with --link-speed.</source>
        <translation>%1의 링크 속도를 알 수 없습니다. --link-speed로 지정하십시오.</translation>
    </message>
    <message>
        <source>There is no GigE Vision camera to plan for.</source>
        <translation>계획할 GigE Vision 카메라가 없습니다.</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>알 수 없음</translation>
    </message>
    <message>
        <source>ADAPTER</source>
        <translation>어댑터</translation>
    </message>
    <message>
        <source>LINK</source>
        <translation>링크</translation>
    </message>
    <message>
        <source>CAMERAS</source>
        <translation>카메라 수</translation>
    </message>
    <message>
        <source>No GigE Vision camera answers.</source>
        <translation>응답하는 GigE Vision 카메라가 없습니다.</translation>
    </message>
    <message>
        <source>No network adapter is searched for cameras.</source>
        <translation>카메라를 찾는 네트워크 어댑터가 없습니다.</translation>
    </message>
    <message>
        <source>%1: cameras in another subnet are not heard, for the system drops their answers (rp_filter is %2). To hear them: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</source>
        <translation>%1: 시스템이 다른 서브넷에 있는 카메라의 응답을 버리므로 받을 수 없습니다(rp_filter 값: %2). 받으려면: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</translation>
    </message>
    <message>
        <source>Socket buffers: capped at %1 bytes (net.core.rmem_max).</source>
        <translation>소켓 버퍼: %1바이트로 제한됨(net.core.rmem_max).</translation>
    </message>
    <message>
        <source>Divide each adapter&apos;s link among its cameras: bandwidth of each, pause between packets</source>
        <translation>각 어댑터의 링크를 카메라에 나눔: 각각의 대역폭, 패킷 사이의 쉼</translation>
    </message>
    <message>
        <source>Cameras; all of GigE Vision when none is named</source>
        <translation>카메라. 지정하지 않으면 모든 GigE Vision 카메라</translation>
    </message>
    <message>
        <source>Write the pauses into the cameras (GevSCPD)</source>
        <translation>쉼을 카메라에 기록(GevSCPD)</translation>
    </message>
    <message>
        <source>Mbit/s of the link, where the adapter does not tell</source>
        <translation>링크의 Mbit/s(어댑터가 알려 주지 않을 때)</translation>
    </message>
    <message>
        <source>Images per second of every camera, such as those of a trigger</source>
        <translation>모든 카메라의 초당 영상 수(트리거 등)</translation>
    </message>
    <message>
        <source>Per cent of the link to keep free</source>
        <translation>비워 둘 링크의 퍼센트</translation>
    </message>
    <message>
        <source>Show network adapters and the cameras on them; plan bandwidth, find what stops images</source>
        <translation>네트워크 어댑터와 그 카메라를 표시. 대역폭을 계획하고 영상을 막는 원인을 찾음</translation>
    </message>
    <message>
        <source>Open a camera, try the way to it, grab for a moment and say what stops images</source>
        <translation>카메라를 열어 경로를 시험하고 잠시 영상을 획득해 영상을 막는 원인을 알림</translation>
    </message>
    <message>
        <source>How long to grab; 2 by default</source>
        <translation>영상을 획득하는 시간. 기본값 2</translation>
    </message>
    <message>
        <source>Look into firmware packages and update cameras with them</source>
        <translation>펌웨어 패키지를 살펴보고 카메라를 업데이트합니다</translation>
    </message>
    <message>
        <source>The firmware package</source>
        <translation>펌웨어 패키지</translation>
    </message>
    <message>
        <source>List the updates of a package</source>
        <translation>패키지의 업데이트를 나열합니다</translation>
    </message>
    <message>
        <source>List the updates that fit a camera, newest first</source>
        <translation>카메라에 맞는 업데이트를 최신순으로 나열합니다</translation>
    </message>
    <message>
        <source>Write an update into a camera</source>
        <translation>업데이트를 카메라에 기록합니다</translation>
    </message>
    <message>
        <source>The version of the update; the newest that fits by default</source>
        <translation>업데이트의 버전. 기본값은 맞는 것 중 최신 버전</translation>
    </message>
    <message>
        <source>Do not ask before a downgrade</source>
        <translation>다운그레이드 전에 묻지 않습니다</translation>
    </message>
    <message>
        <source>Make a package of its description and its files</source>
        <translation>설명과 파일로 패키지를 만듭니다</translation>
    </message>
    <message>
        <source>The package&apos;s description, XML</source>
        <translation>패키지 설명(XML)</translation>
    </message>
    <message>
        <source>VERSION</source>
        <translation>버전</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>설명</translation>
    </message>
    <message>
        <source>RELEASE NOTES</source>
        <translation>릴리스 노트</translation>
    </message>
    <message>
        <source>No update in %1 is for the camera %2.</source>
        <translation>%1에는 카메라 %2용 업데이트가 없습니다.</translation>
    </message>
    <message>
        <source>Several updates fit %1, and their versions cannot be compared; name one with --version (&apos;poolcli firmware match&apos; lists them).</source>
        <translation>%1에 맞는 업데이트가 여러 개이며 버전을 비교할 수 없습니다. --version으로 하나를 지정하십시오(&apos;poolcli firmware match&apos;로 나열).</translation>
    </message>
    <message>
        <source>Several updates that fit %1 are equally new (%2 and %3); name one with --version.</source>
        <translation>%1에 맞는 여러 업데이트의 버전 순위가 같습니다(%2, %3). --version으로 하나를 지정하십시오.</translation>
    </message>
    <message>
        <source>No update to version %1 fits %2; &apos;poolcli firmware match&apos; lists those that do.</source>
        <translation>%2에 맞는 버전 %1 업데이트가 없습니다. 맞는 것은 &apos;poolcli firmware match&apos;로 나열됩니다.</translation>
    </message>
    <message>
        <source>Several updates to version %1 fit %2; take a package that holds one of them only.</source>
        <translation>%2에 맞는 버전 %1 업데이트가 여러 개입니다. 그중 하나만 들어 있는 패키지를 사용하십시오.</translation>
    </message>
    <message>
        <source>upgrade</source>
        <translation>업그레이드</translation>
    </message>
    <message>
        <source>downgrade</source>
        <translation>다운그레이드</translation>
    </message>
    <message>
        <source>the same version again</source>
        <translation>같은 버전 다시 쓰기</translation>
    </message>
    <message>
        <source>not known whether newer</source>
        <translation>더 새로운지 알 수 없음</translation>
    </message>
    <message>
        <source>This may be a downgrade, and there is no terminal to ask on; agree with --yes.</source>
        <translation>다운그레이드일 수 있으나 물어볼 터미널이 없습니다. --yes로 동의하십시오.</translation>
    </message>
    <message>
        <source>The camera would get an older version, or one that may be older. Go on? [y/N]</source>
        <translation>카메라에 이전 버전이거나 이전일 수 있는 버전이 기록됩니다. 계속하시겠습니까? [y/N]</translation>
    </message>
    <message>
        <source>Nothing was changed.</source>
        <translation>변경된 것이 없습니다.</translation>
    </message>
    <message>
        <source>Interrupted: the update ends when the present step is done. Leave the camera switched on.</source>
        <translation>중단됨: 현재 단계가 끝나면 업데이트가 종료됩니다. 카메라의 전원을 켜 두십시오.</translation>
    </message>
    <message>
        <source>Still waiting for the end of the present step. Leave the camera switched on.</source>
        <translation>현재 단계가 끝나기를 계속 기다리고 있습니다. 카메라의 전원을 켜 두십시오.</translation>
    </message>
    <message>
        <source>%1: firmware %2 -&gt; %3 (%4)</source>
        <translation>%1: 펌웨어 %2 -&gt; %3 (%4)</translation>
    </message>
    <message>
        <source>The update of %1 did not complete: %2</source>
        <translation>%1의 업데이트가 완료되지 않았습니다: %2</translation>
    </message>
    <message>
        <source>Nothing was written to the camera.</source>
        <translation>카메라에 아무것도 기록되지 않았습니다.</translation>
    </message>
    <message>
        <source>The camera has firmware %1.</source>
        <translation>카메라의 펌웨어는 %1입니다.</translation>
    </message>
    <message>
        <source>Which firmware the camera has is not known: switch it off and on, look for it with &apos;poolcli list&apos;, and update it again.</source>
        <translation>카메라의 펌웨어를 알 수 없습니다. 카메라의 전원을 껐다 켜고 &apos;poolcli list&apos;로 카메라를 찾은 다음 다시 업데이트하십시오.</translation>
    </message>
    <message>
        <source>%1 was updated, but cannot be reached: %2</source>
        <translation>%1이(가) 업데이트되었지만 연결할 수 없습니다: %2</translation>
    </message>
    <message>
        <source>%1 has firmware %2 now.</source>
        <translation>%1의 펌웨어는 이제 %2입니다.</translation>
    </message>
    <message>
        <source>%1 was made.</source>
        <translation>%1을(를) 만들었습니다.</translation>
    </message>
    <message>
        <source>Checking the camera</source>
        <translation>카메라 확인 중</translation>
    </message>
    <message>
        <source>Reading the package</source>
        <translation>패키지 읽는 중</translation>
    </message>
    <message>
        <source>Writing a feature</source>
        <translation>기능 쓰는 중</translation>
    </message>
    <message>
        <source>Executing a command</source>
        <translation>명령 실행 중</translation>
    </message>
    <message>
        <source>Checking a feature</source>
        <translation>기능 확인 중</translation>
    </message>
    <message>
        <source>Uploading a file</source>
        <translation>파일 업로드 중</translation>
    </message>
    <message>
        <source>Restarting the camera</source>
        <translation>카메라 다시 시작 중</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>업데이트 중</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1초</translation>
    </message>
    <message>
        <source>Estimated time: %1</source>
        <translation>예상 시간: %1</translation>
    </message>
</context>
</TS>
