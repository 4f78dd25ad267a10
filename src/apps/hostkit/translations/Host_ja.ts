<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>Core::Plugin::CPluginManager</name>
    <message>
        <source>unknown error</source>
        <translation>不明なエラー</translation>
    </message>
    <message>
        <source>The plugin folder &quot;%1&quot; cannot be read.</source>
        <translation>プラグインフォルダー「%1」を読み取れません。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; was not started, because the plugin &quot;%2&quot; that it needs failed.</source>
        <translation>プラグイン「%1」は、必要なプラグイン「%2」が失敗したため起動されませんでした。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: %2.</source>
        <translation>プラグイン「%1」を読み込めませんでした: %2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be loaded: its instance is not a plugin.</source>
        <translation>プラグイン「%1」を読み込めませんでした: インスタンスがプラグインではありません。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized.</source>
        <translation>プラグイン「%1」を初期化できませんでした。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not be initialized: %2.</source>
        <translation>プラグイン「%1」を初期化できませんでした: %2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start.</source>
        <translation>プラグイン「%1」は起動を完了できませんでした。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; could not finish its start: %2.</source>
        <translation>プラグイン「%1」は起動を完了できませんでした: %2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; failed while stopping: %2.</source>
        <translation>プラグイン「%1」は停止中に失敗しました: %2。</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginMetadata</name>
    <message>
        <source>The plugin file &quot;%1&quot; does not exist.</source>
        <translation>プラグインファイル「%1」は存在しません。</translation>
    </message>
    <message>
        <source>it has no plugin metadata</source>
        <translation>プラグインのメタデータがありません</translation>
    </message>
    <message>
        <source>its interface identifier is &quot;%1&quot; instead of &quot;%2&quot;</source>
        <translation>インターフェイス識別子が「%2」ではなく「%1」です</translation>
    </message>
    <message>
        <source>its metadata has no object &quot;MetaData&quot;</source>
        <translation>メタデータにオブジェクト「MetaData」がありません</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not true or false</source>
        <translation>メタデータの項目「%1」が真偽値ではありません</translation>
    </message>
    <message>
        <source>its metadata has no name</source>
        <translation>メタデータに名前がありません</translation>
    </message>
    <message>
        <source>its compatible version %1 is newer than its version %2</source>
        <translation>互換バージョン %1 がバージョン %2 より新しくなっています</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a list</source>
        <translation>メタデータの項目「%1」がリストではありません</translation>
    </message>
    <message>
        <source>dependency number %1 of its metadata has no name</source>
        <translation>メタデータの依存関係 %1 番に名前がありません</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata is not a text</source>
        <translation>メタデータの項目「%1」がテキストではありません</translation>
    </message>
    <message>
        <source>its metadata has no entry &quot;%1&quot;</source>
        <translation>メタデータに項目「%1」がありません</translation>
    </message>
    <message>
        <source>the entry &quot;%1&quot; of its metadata, &quot;%2&quot;, is not a version</source>
        <translation>メタデータの項目「%1」の「%2」はバージョンではありません</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is not a plugin that can be used: %2.</source>
        <translation>ファイル「%1」は使用できるプラグインではありません: %2。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3.</source>
        <translation>プラグイン「%1」(%2) は使用できません: %3。</translation>
    </message>
</context>
<context>
    <name>Core::Plugin::CPluginResolver</name>
    <message>
        <source>The plugin &quot;%1&quot; (%2) cannot be used: %3 has the same name.</source>
        <translation>プラグイン「%1」(%2) は使用できません: %3 が同じ名前です。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, which is missing.</source>
        <translation>プラグイン「%1」にはプラグイン「%2」のバージョン %3 が必要ですが、見つかりません。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot; in version %3, but that one has version %4, compatible down to %5.</source>
        <translation>プラグイン「%1」にはプラグイン「%2」のバージョン %3 が必要ですが、そのバージョンは %4（%5 まで互換）です。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; needs the plugin &quot;%2&quot;, which cannot be used.</source>
        <translation>プラグイン「%1」に必要なプラグイン「%2」が使用できません。</translation>
    </message>
    <message>
        <source>The plugin &quot;%1&quot; depends on itself: %2.</source>
        <translation>プラグイン「%1」が自分自身に依存しています: %2。</translation>
    </message>
</context>
<context>
    <name>HostKit</name>
    <message>
        <source>There is no camera called &quot;%1&quot;.</source>
        <translation>「%1」という名前のカメラはありません。</translation>
    </message>
    <message>
        <source>Several cameras are called &quot;%1&quot;: %2.</source>
        <translation>「%1」という名前のカメラが複数あります: %2。</translation>
    </message>
    <message>
        <source>No plugin offers the service %1.</source>
        <translation>サービス %1 を提供するプラグインがありません。</translation>
    </message>
    <message>
        <source>The pixel format 0x%1 cannot be shown.</source>
        <translation>ピクセルフォーマット 0x%1 は表示できません。</translation>
    </message>
    <message>
        <source>An image of %1 x %2 pixels cannot be shown.</source>
        <translation>%1 x %2 ピクセルの画像は表示できません。</translation>
    </message>
    <message>
        <source>The image holds %1 bytes where its %2 x %3 pixels of %4 need %5.</source>
        <translation>画像は %1 バイトですが、%4 の %2 x %3 ピクセルには %5 バイト必要です。</translation>
    </message>
    <message>
        <source>There is no image.</source>
        <translation>画像がありません。</translation>
    </message>
    <message>
        <source>There is no interface called &quot;%1&quot;.</source>
        <translation>「%1」という名前のインターフェースはありません。</translation>
    </message>
    <message>
        <source>Several interfaces are called &quot;%1&quot;: %2.</source>
        <translation>「%1」という名前のインターフェースが複数あります: %2。</translation>
    </message>
    <message>
        <source>The image is compressed, and the camera did not tell how.</source>
        <translation>画像は圧縮されていますが、カメラは圧縮方法を示していません。</translation>
    </message>
    <message>
        <source>The camera could not make the image as small as it was told to.</source>
        <translation>カメラは画像を指定された大きさまで圧縮できませんでした。</translation>
    </message>
    <message>
        <source>Bytes are missing at the end of the compressed image.</source>
        <translation>圧縮画像の末尾のバイトが欠けています。</translation>
    </message>
    <message>
        <source>The compressed image is damaged.</source>
        <translation>圧縮画像が破損しています。</translation>
    </message>
    <message>
        <source>The image is compressed in a way that is not known here.</source>
        <translation>画像の圧縮方式は未対応です。</translation>
    </message>
    <message>
        <source>The image was compressed under other settings than those that the camera told.</source>
        <translation>画像は、カメラが示した設定とは異なる設定で圧縮されました。</translation>
    </message>
    <message>
        <source>The compressed image cannot be decoded (status %1).</source>
        <translation>圧縮画像を復号できません (状態 %1)。</translation>
    </message>
    <message>
        <source>The camera&apos;s address %1 is in another subnet than the network adapter %2 (%3). Give the camera an address of the adapter&apos;s subnet, or the adapter one of the camera&apos;s.</source>
        <translation>カメラのアドレス %1 は、ネットワークアダプター %2 (%3) と異なるサブネットにあります。カメラにアダプターのサブネットのアドレスを設定するか、アダプターにカメラのサブネットのアドレスを設定してください。</translation>
    </message>
    <message>
        <source>Another application controls the camera: %1 End it there, or watch the camera with &apos;poolcli monitor&apos;.</source>
        <translation>別のアプリケーションがカメラを制御しています: %1 そのアプリケーションを終了するか、&apos;poolcli monitor&apos; でカメラを監視してください。</translation>
    </message>
    <message>
        <source>The camera is seen but answers no commands. Another device may have the same address %1, or a firewall stops UDP port 3956.</source>
        <translation>カメラは見つかりましたが、コマンドに応答しません。別の機器が同じアドレス %1 を使っているか、ファイアウォールが UDP ポート 3956 を止めている可能性があります。</translation>
    </message>
    <message>
        <source>The camera could not be opened: %1</source>
        <translation>カメラを開けませんでした: %1</translation>
    </message>
    <message>
        <source>The connection to the camera was lost: check cable, power and switch.</source>
        <translation>カメラとの接続が失われました。ケーブル、電源、スイッチを確認してください。</translation>
    </message>
    <message>
        <source>The camera does not start grabbing: %1</source>
        <translation>カメラは画像の取得を開始しません: %1</translation>
    </message>
    <message>
        <source>No test packet arrives, and the camera waits for a trigger. Send one, or switch TriggerMode off, to see whether images arrive.</source>
        <translation>テストパケットが届かず、カメラはトリガーを待っています。画像が届くかどうかを確かめるには、トリガーを送るか TriggerMode をオフにしてください。</translation>
    </message>
    <message>
        <source>Commands are answered, so packets are sent, but none arrives, neither test packets nor images. Does a firewall stop them? Let UDP packets from %1 through on the adapter %2.</source>
        <translation>コマンドには応答があるためパケットは送信されていますが、テストパケットも画像も一つも届きません。ファイアウォールが止めていませんか。アダプター %2 で %1 からの UDP パケットを許可してください。</translation>
    </message>
    <message>
        <source>The packets of %1 bytes are too large for the way to this computer, which carries %2. Set GevSCPSPacketSize to %2, leave it alone, or set up jumbo frames on every switch and adapter.</source>
        <translation>%1 バイトのパケットは、このコンピューターまでの経路には大きすぎます。経路が通すのは %2 バイトです。GevSCPSPacketSize を %2 にするか、設定せずにおくか、すべてのスイッチとアダプターでジャンボフレームを有効にしてください。</translation>
    </message>
    <message>
        <source>Packets arrive, but none of %1 images was complete.</source>
        <translation>パケットは届きますが、%1 枚の画像はどれも不完全でした。</translation>
    </message>
    <message>
        <source>Test packets arrive, but the camera sends no image: does it wait for a trigger?</source>
        <translation>テストパケットは届きますが、カメラは画像を送りません。トリガーを待っていませんか。</translation>
    </message>
    <message>
        <source>The socket buffer is capped at %1 bytes, and images of this size need %2: images may be lost. Raise the limit with: sysctl -w net.core.rmem_max=%2</source>
        <translation>ソケットバッファーは %1 バイトに制限されていますが、この大きさの画像には %2 バイトが必要です。画像が失われることがあります。次のコマンドで上限を上げてください: sysctl -w net.core.rmem_max=%2</translation>
    </message>
    <message>
        <source>Only packets of up to %1 bytes arrive, though the adapter takes %2: a switch on the way, or the camera, does not do jumbo frames. Images cost more processor time.</source>
        <translation>アダプターは %2 バイトまで受け取れますが、届くのは %1 バイトまでのパケットだけです。途中のスイッチまたはカメラがジャンボフレームに対応していません。画像の受信により多くの CPU 時間がかかります。</translation>
    </message>
    <message>
        <source>%1 of %2 images were incomplete: packets are lost. With several cameras on the adapter, let &apos;poolcli network plan --apply&apos; set pauses between packets.</source>
        <translation>%2 枚中 %1 枚の画像が不完全でした。パケットが失われています。アダプターに複数のカメラがある場合は、&apos;poolcli network plan --apply&apos; でパケット間の待ち時間を設定してください。</translation>
    </message>
</context>
<context>
    <name>ParameterCollection::CParameterCollection</name>
    <message>
        <source>No node map has been announced under %1.</source>
        <translation>%1 にはノードマップが登録されていません。</translation>
    </message>
    <message>
        <source>The node map under %1 is being detached.</source>
        <translation>%1 のノードマップは切り離し中です。</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CDataProcessingGraph</name>
    <message>
        <source>A null node cannot be added to the graph.</source>
        <translation>空のノードはグラフに追加できません。</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; is in the graph already.</source>
        <translation>ノード「%1」は既にグラフにあります。</translation>
    </message>
    <message>
        <source>The graph has a node &quot;%1&quot; for &quot;%2&quot; already.</source>
        <translation>グラフには「%2」のノード「%1」が既にあります。</translation>
    </message>
    <message>
        <source>A node to be connected is not in the graph.</source>
        <translation>接続するノードがグラフにありません。</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no input port %2.</source>
        <translation>ノード「%1」に入力ポート %2 はありません。</translation>
    </message>
    <message>
        <source>The node &quot;%1&quot; has no output port %2.</source>
        <translation>ノード「%1」に出力ポート %2 はありません。</translation>
    </message>
    <message>
        <source>Input port %1 of the node &quot;%2&quot; is connected already.</source>
        <translation>ノード「%2」の入力ポート %1 は既に接続されています。</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; allows only one connection.</source>
        <translation>ノード「%2」の出力ポート %1 は接続を一つだけ許可します。</translation>
    </message>
    <message>
        <source>Output port %1 of the node &quot;%2&quot; gives &quot;%3&quot;, but input port %4 of the node &quot;%5&quot; takes &quot;%6&quot;.</source>
        <translation>ノード「%2」の出力ポート %1 は「%3」を出力しますが、ノード「%5」の入力ポート %4 は「%6」を受け取ります。</translation>
    </message>
    <message>
        <source>Connecting the node &quot;%1&quot; to the node &quot;%2&quot; would close a circle.</source>
        <translation>ノード「%1」をノード「%2」に接続すると循環になります。</translation>
    </message>
    <message>
        <source>Unknown error.</source>
        <translation>不明なエラーです。</translation>
    </message>
</context>
<context>
    <name>Plugin::DataProcessingCore::CNodeRegistry</name>
    <message>
        <source>There is no kind of node with the name &quot;%1&quot;.</source>
        <translation>「%1」という種類のノードはありません。</translation>
    </message>
</context>
<context>
    <name>PoolCli</name>
    <message>
        <source>No camera found.</source>
        <translation>カメラが見つかりません。</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>MODEL</source>
        <translation>型式</translation>
    </message>
    <message>
        <source>SERIAL</source>
        <translation>シリアル番号</translation>
    </message>
    <message>
        <source>USER NAME</source>
        <translation>ユーザー名</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>種類</translation>
    </message>
    <message>
        <source>ADDRESS</source>
        <translation>アドレス</translation>
    </message>
    <message>
        <source>Watching; Ctrl-C ends.</source>
        <translation>監視中です。Ctrl-C で終了します。</translation>
    </message>
    <message>
        <source>PROPERTY</source>
        <translation>プロパティ</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>値</translation>
    </message>
    <message>
        <source>%1 does not start grabbing: %2</source>
        <translation>%1 は取り込みを開始しません: %2</translation>
    </message>
    <message>
        <source>%1: %2 images, %3 failed, %4 missing, %5 fps, %6 MB/s</source>
        <translation>%1: 画像 %2、失敗 %3、欠落 %4、%5 fps、%6 MB/s</translation>
    </message>
    <message>
        <source> (connection lost)</source>
        <translation>（接続が失われました）</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; 'poolcli --help' lists them.</source>
        <translation>コマンド「%1」はありません。'poolcli --help' で一覧を表示します。</translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation>%1 に書き込めませんでした: %2</translation>
    </message>
    <message>
        <source>%1: picture in %2</source>
        <translation>%1: 画像は %2</translation>
    </message>
    <message>
        <source>%1 gave no image: %2</source>
        <translation>%1 から画像が得られませんでした: %2</translation>
    </message>
    <message>
        <source>none arrived in time.</source>
        <translation>時間内に届きませんでした。</translation>
    </message>
    <message>
        <source>%1 x %2 pixels in %3</source>
        <translation>%1 x %2 ピクセル: %3</translation>
    </message>
    <message>
        <source>%1 has no feature %2.</source>
        <translation>%1 に機能 %2 はありません。</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 を読み取れません: %2</translation>
    </message>
    <message>
        <source>There is no feature %1.</source>
        <translation>機能 %1 はありません。</translation>
    </message>
    <message>
        <source>%1 is no command; give a value as %1=VALUE.</source>
        <translation>%1 はコマンドではありません。%1=値 の形で値を指定してください。</translation>
    </message>
    <message>
        <source>%1 was refused: %2</source>
        <translation>%1 は拒否されました: %2</translation>
    </message>
    <message>
        <source>%1 done</source>
        <translation>%1 完了</translation>
    </message>
    <message>
        <source>There is no camera.</source>
        <translation>カメラがありません。</translation>
    </message>
    <message>
        <source>There are %1 cameras; name one of them.</source>
        <translation>カメラが %1 台あります。いずれかを指定してください。</translation>
    </message>
    <message>
        <source>%1 could not be opened: %2</source>
        <translation>%1 を開けませんでした: %2</translation>
    </message>
    <message>
        <source>it is in exclusive use.</source>
        <translation>排他的に使用中です。</translation>
    </message>
    <message>
        <source>%1 has no parameters.</source>
        <translation>%1 にパラメーターはありません。</translation>
    </message>
    <message>
        <source>%1: the connection to the camera was lost.</source>
        <translation>%1: カメラとの接続が失われました。</translation>
    </message>
    <message>
        <source>No interface found.</source>
        <translation>インターフェースが見つかりません。</translation>
    </message>
    <message>
        <source>No feature to show.</source>
        <translation>表示する機能はありません。</translation>
    </message>
    <message>
        <source>No device on this interface.</source>
        <translation>このインターフェースにはデバイスがありません。</translation>
    </message>
    <message>
        <source>ACCESS</source>
        <translation>アクセス</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>識別子</translation>
    </message>
    <message>
        <source>%1 is on no interface that could be opened; &apos;poolcli interfaces&apos; lists those.</source>
        <translation>%1 は開くことのできるインターフェースにありません。「poolcli interfaces」で一覧を表示できます。</translation>
    </message>
    <message>
        <source>, compressed to %1% (%2% to %3%), %4 lossless, %5 lossy, %6 not decodable</source>
        <translation>、圧縮率 %1% (%2%～%3%)、可逆 %4、非可逆 %5、復号不能 %6</translation>
    </message>
    <message>
        <source>, compressed, %1 not decodable</source>
        <translation>、圧縮、復号不能 %1</translation>
    </message>
    <message>
        <source>%1: none of its compressed images can be decoded.</source>
        <translation>%1: 圧縮画像を 1 枚も復号できません。</translation>
    </message>
    <message>
        <source>%1 is on no interface: an emulated camera is on one when its data name it (&quot;interface&quot;).</source>
        <translation>%1 はどのインターフェースにもありません。エミュレートされたカメラには、データの「interface」でインターフェースを指定してください。</translation>
    </message>
    <message>
        <source>The camera has no chunk data.</source>
        <translation>カメラにチャンクデータがありません。</translation>
    </message>
    <message>
        <source>The camera has no chunk %1; it has: %2.</source>
        <translation>カメラにチャンク %1 はありません。使用可能: %2。</translation>
    </message>
    <message>
        <source>The chunk settings could not be restored: %1</source>
        <translation>チャンクの設定を元に戻せませんでした: %1</translation>
    </message>
    <message>
        <source>no chunk data</source>
        <translation>チャンクデータなし</translation>
    </message>
    <message>
        <source>%1 sent images without chunk data.</source>
        <translation>%1 はチャンクデータのない画像を送信しました。</translation>
    </message>
    <message>
        <source>The camera reports no events.</source>
        <translation>カメラはイベントを通知しません。</translation>
    </message>
    <message>
        <source>The camera&apos;s events cannot be received; the log says why.</source>
        <translation>カメラのイベントを受信できません。理由はログにあります。</translation>
    </message>
    <message>
        <source>The camera has no event %1; it has: %2.</source>
        <translation>カメラにイベント %1 はありません。使用可能: %2。</translation>
    </message>
    <message>
        <source>The event settings could not be restored: %1</source>
        <translation>イベントの設定を元に戻せませんでした: %1</translation>
    </message>
    <message>
        <source>%1 did not start: %2</source>
        <translation>%1 は開始しませんでした: %2</translation>
    </message>
    <message>
        <source>The camera has no features that show the event %1.</source>
        <translation>カメラにはイベント %1 を示す機能がありません。</translation>
    </message>
    <message>
        <source>The camera has no features that show its events.</source>
        <translation>カメラにはイベントを示す機能がありません。</translation>
    </message>
    <message>
        <source>Waiting for %1; Ctrl-C ends.</source>
        <translation>%1 を待っています。Ctrl-C で終了します。</translation>
    </message>
    <message>
        <source>%1 events came faster than they could be handled and were dropped.</source>
        <translation>%1 個のイベントは処理が追いつかないため破棄されました。</translation>
    </message>
    <message>
        <source>Show what a camera reports by itself</source>
        <translation>カメラが自ら通知すること (イベント) を表示します</translation>
    </message>
    <message>
        <source>Events, such as ExposureEnd; all that the camera has when none is named. They are switched on, and at the end as they were</source>
        <translation>ExposureEnd などのイベント。指定がなければカメラのすべて。有効にし、最後に元に戻します</translation>
    </message>
    <message>
        <source>Stop after that many events</source>
        <translation>この数のイベントの後に停止します</translation>
    </message>
    <message>
        <source>Grab meanwhile: most events are of images</source>
        <translation>その間グラブします: ほとんどのイベントは画像のものです</translation>
    </message>
    <message>
        <source>NAME=VALUE to write, or NAME of a command to execute, when events are on</source>
        <translation>イベントを有効にした後に書き込む NAME=VALUE、または実行するコマンドの NAME</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera; action commands do not reach it.</source>
        <translation>%1 は GigE Vision カメラではないため、アクションコマンドは届きません。</translation>
    </message>
    <message>
        <source>The action command could not be sent to %1: perhaps no network adapter in use leads there. The reason is in the debug log (QT_LOGGING_RULES=&quot;default.debug=true&quot;).</source>
        <translation>アクションコマンドを %1 に送信できませんでした。使用中のネットワークアダプターがそこに通じていない可能性があります。理由はデバッグログにあります (QT_LOGGING_RULES=&quot;default.debug=true&quot;)。</translation>
    </message>
    <message>
        <source>Sent to %1; no answers asked for.</source>
        <translation>%1 に送信しました。応答は求めていません。</translation>
    </message>
    <message>
        <source>ANSWER</source>
        <translation>応答</translation>
    </message>
    <message>
        <source>silent</source>
        <translation>応答なし</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>拒否</translation>
    </message>
    <message>
        <source>accepted</source>
        <translation>受理</translation>
    </message>
    <message>
        <source>Cameras refused the action command. Their reasons are in the debug log (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;).</source>
        <translation>アクションコマンドを拒否したカメラがあります。理由はデバッグログにあります (QT_LOGGING_RULES=&quot;velmo.gige.debug=true&quot;)。</translation>
    </message>
    <message>
        <source>Cameras stayed silent: no application has them open, their keys or masks do not fit, or the command or its answer was lost.</source>
        <translation>応答しないカメラがあります。カメラを開いているアプリケーションがないか、キーまたはマスクが一致しないか、コマンドまたは応答が失われました。</translation>
    </message>
    <message>
        <source>No camera answered the action command: no application has one open, or their keys or masks do not fit.</source>
        <translation>アクションコマンドに応答したカメラはありません。カメラを開いているアプリケーションがないか、キーまたはマスクが一致しません。</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>アクション</translation>
    </message>
    <message>
        <source>SCHEDULED</source>
        <translation>時刻指定</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>no</source>
        <translation>いいえ</translation>
    </message>
    <message>
        <source>Print JSON</source>
        <translation>JSON で出力します</translation>
    </message>
    <message>
        <source>Seconds to wait for cameras to be found</source>
        <translation>カメラが見つかるまで待つ秒数</translation>
    </message>
    <message>
        <source>User name, serial number, vendor-model-serial or full name; may be left out when there is only one</source>
        <translation>ユーザー名、シリアル番号、ベンダー-モデル-シリアル番号、または完全名。1 台だけのときは省略できます</translation>
    </message>
    <message>
        <source>Only features whose name holds this text</source>
        <translation>名前にこの文字列を含む機能だけ</translation>
    </message>
    <message>
        <source>Beginner, Expert, Guru or Invisible</source>
        <translation>Beginner、Expert、Guru、Invisible のいずれか</translation>
    </message>
    <message>
        <source>Show a camera&apos;s features as a tree, with values</source>
        <translation>カメラの機能を値とともにツリーで表示します</translation>
    </message>
    <message>
        <source>Only the node map of: camera, instant (the SDK&apos;s camera object), stream, tl (transport layer), event (event grabber), interface (that the camera is on); all shows every one of them</source>
        <translation>次のノードマップだけ: camera、instant (SDK のカメラオブジェクト)、stream、tl (トランスポート層)、event (イベントグラバー)、interface (カメラが接続されているもの)。all はすべてを表示します</translation>
    </message>
    <message>
        <source>Read features</source>
        <translation>機能を読み取ります</translation>
    </message>
    <message>
        <source>The camera</source>
        <translation>カメラ</translation>
    </message>
    <message>
        <source>Names, such as ExposureTime, @StreamGrabber0/PayloadSize or @Interface/InterfaceID</source>
        <translation>名前。例: ExposureTime、@StreamGrabber0/PayloadSize、@Interface/InterfaceID</translation>
    </message>
    <message>
        <source>Write features and execute commands</source>
        <translation>機能に書き込み、コマンドを実行します</translation>
    </message>
    <message>
        <source>NAME=VALUE writes, NAME executes a command</source>
        <translation>NAME=VALUE は書き込み、NAME はコマンドの実行</translation>
    </message>
    <message>
        <source>Grab from one, several or all cameras at once</source>
        <translation>1 台、複数、またはすべてのカメラから同時に取り込みます</translation>
    </message>
    <message>
        <source>Cameras; all when none is named</source>
        <translation>カメラ。指定がなければすべて</translation>
    </message>
    <message>
        <source>Stop after that many images of each camera</source>
        <translation>各カメラの画像がこの枚数になったら停止します</translation>
    </message>
    <message>
        <source>Stop after that time; without this and without -n, Ctrl-C ends</source>
        <translation>この時間の後に停止します。これも -n もなければ Ctrl-C で終了します</translation>
    </message>
    <message>
        <source>NAME=VALUE to write before grabbing</source>
        <translation>取り込みの前に書き込む NAME=VALUE</translation>
    </message>
    <message>
        <source>CAMERA NAME=VALUE: the same for one of the cameras</source>
        <translation>CAMERA NAME=VALUE: カメラ 1 台だけに同じことをします</translation>
    </message>
    <message>
        <source>Folder for one PNG of each camera&apos;s last image</source>
        <translation>各カメラの最後の画像を PNG で保存するフォルダー</translation>
    </message>
    <message>
        <source>Take one image and write it as PNG (16 bits for deep formats)</source>
        <translation>画像を 1 枚撮り、PNG で保存します (高階調の形式は 16 ビット)</translation>
    </message>
    <message>
        <source>The file; by default model-serial.png</source>
        <translation>ファイル。既定は モデル-シリアル番号.png</translation>
    </message>
    <message>
        <source>Seconds to wait for the image</source>
        <translation>画像を待つ秒数</translation>
    </message>
    <message>
        <source>Grab from one camera and print its statistics every second</source>
        <translation>1 台のカメラから取り込み、統計を毎秒出力します</translation>
    </message>
    <message>
        <source>Watch a camera that another application controls, without touching it</source>
        <translation>別のアプリケーションが制御しているカメラを、干渉せずに監視します</translation>
    </message>
    <message>
        <source>Stop after that many images</source>
        <translation>この枚数の画像の後に停止します</translation>
    </message>
    <message>
        <source>Stop after that time; 5 by default</source>
        <translation>この時間の後に停止します。既定は 5</translation>
    </message>
    <message>
        <source>Grab with chunk data and show each image&apos;s values</source>
        <translation>チャンクデータ付きで取り込み、各画像の値を表示します</translation>
    </message>
    <message>
        <source>Stop after that many images; 10 by default</source>
        <translation>この枚数の画像の後に停止します。既定は 10</translation>
    </message>
    <message>
        <source>Stop after that time</source>
        <translation>この時間の後に停止します</translation>
    </message>
    <message>
        <source>Only these chunks, with commas between, such as Timestamp,Gain; all that the camera has by default. Settings are restored at the end</source>
        <translation>これらのチャンクだけ。コンマ区切り、例: Timestamp,Gain。既定はカメラにあるものすべて。設定は最後に元に戻します</translation>
    </message>
    <message>
        <source>List the cameras that can be found</source>
        <translation>見つかるカメラを一覧表示します</translation>
    </message>
    <message>
        <source>Show cameras coming and going, until Ctrl-C</source>
        <translation>Ctrl-C まで、カメラの接続と切断を表示します</translation>
    </message>
    <message>
        <source>End after that time</source>
        <translation>この時間の後に終了します</translation>
    </message>
    <message>
        <source>Show all that discovery tells of one camera</source>
        <translation>1 台のカメラについて検出で分かることをすべて表示します</translation>
    </message>
    <message>
        <source>List the interfaces; with a name: its features and the devices on it</source>
        <translation>インターフェースを一覧表示します。名前を指定すると、その機能と接続されたデバイスを表示します</translation>
    </message>
    <message>
        <source>Identifier, name or full name</source>
        <translation>識別子、名前、または完全名</translation>
    </message>
    <message>
        <source>Find, open and use cameras through the CameraPool plugin</source>
        <translation>CameraPool プラグインを通じてカメラを検出し、開き、使用します</translation>
    </message>
    <message>
        <source>Language of messages: en, ja, zh or ko</source>
        <translation>メッセージの言語: en、ja、zh、ko</translation>
    </message>
    <message>
        <source>Exit codes: 0 done, 1 the camera or the plugin refused (the reason is on stderr), 2 wrong usage.</source>
        <translation>終了コード: 0 完了、1 カメラまたはプラグインが拒否 (理由は stderr)、2 使い方の誤り。</translation>
    </message>
    <message>
        <source>Show this help and end</source>
        <translation>このヘルプを表示して終了します</translation>
    </message>
    <message>
        <source>Show the version and end</source>
        <translation>バージョンを表示して終了します</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>使い方</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>オプション</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>オプション</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>引数</translation>
    </message>
    <message>
        <source>SUBCOMMAND</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>必須</translation>
    </message>
    <message>
        <source>Cameras that must take it; without any, all that are found are listed</source>
        <translation>受け付けなければならないカメラ。指定がなければ、見つかったすべてを一覧表示します</translation>
    </message>
    <message>
        <source>ActionDeviceKey of the cameras; 0x... is hexadecimal</source>
        <translation>カメラの ActionDeviceKey。0x... は 16 進数</translation>
    </message>
    <message>
        <source>ActionGroupKey of one of their action signals</source>
        <translation>アクション信号の 1 つの ActionGroupKey</translation>
    </message>
    <message>
        <source>Signals whose ActionGroupMask has a bit in common with this; not 0</source>
        <translation>ActionGroupMask がこの値と共通のビットを持つ信号。0 以外</translation>
    </message>
    <message>
        <source>255.255.255.255 for every adapter, the broadcast address of a network, or one camera&apos;s own</source>
        <translation>255.255.255.255 はすべてのアダプター。ネットワークのブロードキャストアドレス、またはカメラ 1 台のアドレスも可</translation>
    </message>
    <message>
        <source>Seconds to wait for answers; 0 asks for none</source>
        <translation>応答を待つ秒数。0 は応答を求めません</translation>
    </message>
    <message>
        <source>When, in ticks of the cameras&apos; clocks (TimestampLatchValue)</source>
        <translation>時刻。カメラの時計の目盛り (TimestampLatchValue)</translation>
    </message>
    <message>
        <source>Trigger many GigE Vision cameras at once (action commands)</source>
        <translation>多数の GigE Vision カメラを同時にトリガーします (アクションコマンド)</translation>
    </message>
    <message>
        <source>Trigger now</source>
        <translation>今すぐトリガーします</translation>
    </message>
    <message>
        <source>Trigger at a time of the cameras&apos; synchronised clocks</source>
        <translation>カメラの同期した時計の時刻にトリガーします</translation>
    </message>
    <message>
        <source>Open cameras and tell which take action commands</source>
        <translation>カメラを開き、アクションコマンドを受け付けるものを示します</translation>
    </message>
    <message>
        <source>Trying the way to the camera with test packets ...</source>
        <translation>テストパケットでカメラまでの経路を調べています ...</translation>
    </message>
    <message>
        <source>%1: the way to the camera could not be tried: %2</source>
        <translation>%1: カメラまでの経路を調べられませんでした: %2</translation>
    </message>
    <message>
        <source>Packets of up to %1 bytes arrive; the camera sends %2 (the adapter&apos;s limit is %3).</source>
        <translation>%1 バイトまでのパケットが届きます。カメラは %2 バイトで送信します (アダプターの上限は %3)。</translation>
    </message>
    <message>
        <source>No test packet arrives.</source>
        <translation>テストパケットが届きません。</translation>
    </message>
    <message>
        <source>Grabbing for %1 s ...</source>
        <translation>%1 秒間画像を取得しています ...</translation>
    </message>
    <message>
        <source>%1 is no GigE Vision camera.</source>
        <translation>%1 は GigE Vision カメラではありません。</translation>
    </message>
    <message>
        <source>Opening %1 at %2 through %3 ...</source>
        <translation>%3 経由で %2 の %1 を開いています ...</translation>
    </message>
    <message>
        <source>No images: %1</source>
        <translation>画像なし: %1</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>注意: %1</translation>
    </message>
    <message>
        <source>Ended early.</source>
        <translation>途中で終了しました。</translation>
    </message>
    <message>
        <source>%1 images arrived, %2 incompletely.</source>
        <translation>%1 枚の画像が届き、うち %2 枚が不完全でした。</translation>
    </message>
    <message>
        <source>%1 does not tell its frame rate; give it with --rate.</source>
        <translation>%1 はフレームレートを通知しません。--rate で指定してください。</translation>
    </message>
    <message>
        <source>%1: the pause between packets cannot be set: %2</source>
        <translation>%1: パケット間の待ち時間を設定できません: %2</translation>
    </message>
    <message>
        <source>CAMERA</source>
        <translation>カメラ</translation>
    </message>
    <message>
        <source>PACKET</source>
        <translation>パケット</translation>
    </message>
    <message>
        <source>LINK %</source>
        <translation>回線 %</translation>
    </message>
    <message>
        <source>PAUSE</source>
        <translation>待ち時間</translation>
    </message>
    <message>
        <source>TICKS</source>
        <translation>ティック</translation>
    </message>
    <message>
        <source>%1: %2 of %3 Mbit/s (%4 %), of which %5 % are kept free</source>
        <translation>%1: %3 Mbit/s 中 %2 Mbit/s (%4 %)、うち %5 % は空けておきます</translation>
    </message>
    <message>
        <source>Everything fits; the pauses are set.</source>
        <translation>すべて収まります。待ち時間を設定しました。</translation>
    </message>
    <message>
        <source>Everything fits; --apply sets the pauses.</source>
        <translation>すべて収まります。--apply で待ち時間を設定します。</translation>
    </message>
    <message>
        <source>The cameras on %1 need %2 Mbit/s, but only %3 can be used: images will be lost. Lower the frame rates, make the images smaller, or use another adapter for some cameras.</source>
        <translation>%1 のカメラには %2 Mbit/s が必要ですが、使えるのは %3 だけです。画像が失われます。フレームレートを下げるか、画像を小さくするか、一部のカメラを別のアダプターにつないでください。</translation>
    </message>
    <message>
        <source>%1: lower the frame rate from %2 to %3</source>
        <translation>%1: フレームレートを %2 から %3 に下げてください</translation>
    </message>
    <message>
        <source>There is no plan for %1: %2</source>
        <translation>%1 の計画を立てられません: %2</translation>
    </message>
    <message>
        <source>The link speed of %1 is not known; give it with --link-speed.</source>
        <translation>%1 のリンク速度が不明です。--link-speed で指定してください。</translation>
    </message>
    <message>
        <source>There is no GigE Vision camera to plan for.</source>
        <translation>計画の対象となる GigE Vision カメラがありません。</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>ADAPTER</source>
        <translation>アダプター</translation>
    </message>
    <message>
        <source>LINK</source>
        <translation>リンク</translation>
    </message>
    <message>
        <source>CAMERAS</source>
        <translation>カメラ数</translation>
    </message>
    <message>
        <source>No GigE Vision camera answers.</source>
        <translation>応答する GigE Vision カメラがありません。</translation>
    </message>
    <message>
        <source>No network adapter is searched for cameras.</source>
        <translation>カメラを探すネットワークアダプターがありません。</translation>
    </message>
    <message>
        <source>%1: cameras in another subnet are not heard, for the system drops their answers (rp_filter is %2). To hear them: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</source>
        <translation>%1: 別のサブネットにあるカメラの応答は、システムが破棄するため届きません (rp_filter は %2)。受け取るには: sysctl -w net.ipv4.conf.all.rp_filter=0 net.ipv4.conf.%1.rp_filter=0</translation>
    </message>
    <message>
        <source>Socket buffers: capped at %1 bytes (net.core.rmem_max).</source>
        <translation>ソケットバッファー: %1 バイトに制限 (net.core.rmem_max)。</translation>
    </message>
    <message>
        <source>Divide each adapter&apos;s link among its cameras: bandwidth of each, pause between packets</source>
        <translation>各アダプターの回線をカメラに割り当てる: それぞれの帯域、パケット間の待ち時間</translation>
    </message>
    <message>
        <source>Cameras; all of GigE Vision when none is named</source>
        <translation>カメラ。指定がなければすべての GigE Vision カメラ</translation>
    </message>
    <message>
        <source>Write the pauses into the cameras (GevSCPD)</source>
        <translation>待ち時間をカメラに書き込む (GevSCPD)</translation>
    </message>
    <message>
        <source>Mbit/s of the link, where the adapter does not tell</source>
        <translation>回線の Mbit/s (アダプターが通知しない場合)</translation>
    </message>
    <message>
        <source>Images per second of every camera, such as those of a trigger</source>
        <translation>すべてのカメラの毎秒画像数 (トリガーの場合など)</translation>
    </message>
    <message>
        <source>Per cent of the link to keep free</source>
        <translation>空けておく回線の割合 (パーセント)</translation>
    </message>
    <message>
        <source>Show network adapters and the cameras on them; plan bandwidth, find what stops images</source>
        <translation>ネットワークアダプターとそのカメラを表示。帯域を計画し、画像を止めているものを探す</translation>
    </message>
    <message>
        <source>Open a camera, try the way to it, grab for a moment and say what stops images</source>
        <translation>カメラを開いて経路を調べ、しばらく画像を取得し、画像を止めているものを示す</translation>
    </message>
    <message>
        <source>How long to grab; 2 by default</source>
        <translation>画像を取得する秒数。既定は 2</translation>
    </message>
    <message>
        <source>Look into firmware packages and update cameras with them</source>
        <translation>ファームウェア パッケージの内容を調べ、カメラを更新する</translation>
    </message>
    <message>
        <source>The firmware package</source>
        <translation>ファームウェア パッケージ</translation>
    </message>
    <message>
        <source>List the updates of a package</source>
        <translation>パッケージに含まれる更新を一覧表示する</translation>
    </message>
    <message>
        <source>List the updates that fit a camera, newest first</source>
        <translation>カメラに適合する更新を新しい順に一覧表示する</translation>
    </message>
    <message>
        <source>Write an update into a camera</source>
        <translation>更新をカメラに書き込む</translation>
    </message>
    <message>
        <source>The version of the update; the newest that fits by default</source>
        <translation>更新のバージョン。既定では適合する最新のもの</translation>
    </message>
    <message>
        <source>Do not ask before a downgrade</source>
        <translation>ダウングレードの前に確認しない</translation>
    </message>
    <message>
        <source>Make a package of its description and its files</source>
        <translation>記述とファイルからパッケージを作成する</translation>
    </message>
    <message>
        <source>The package&apos;s description, XML</source>
        <translation>パッケージの記述 (XML)</translation>
    </message>
    <message>
        <source>VERSION</source>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>説明</translation>
    </message>
    <message>
        <source>RELEASE NOTES</source>
        <translation>リリース ノート</translation>
    </message>
    <message>
        <source>No update in %1 is for the camera %2.</source>
        <translation>%1 にはカメラ %2 用の更新がありません。</translation>
    </message>
    <message>
        <source>Several updates fit %1, and their versions cannot be compared; name one with --version (&apos;poolcli firmware match&apos; lists them).</source>
        <translation>%1 に適合する更新が複数あり、バージョンを比較できません。--version で指定してください（&apos;poolcli firmware match&apos; で一覧表示）。</translation>
    </message>
    <message>
        <source>Several updates that fit %1 are equally new (%2 and %3); name one with --version.</source>
        <translation>%1 に適合する複数の更新が同じ新しさです（%2 と %3）。--version で指定してください。</translation>
    </message>
    <message>
        <source>No update to version %1 fits %2; &apos;poolcli firmware match&apos; lists those that do.</source>
        <translation>%2 に適合するバージョン %1 の更新がありません。適合するものは &apos;poolcli firmware match&apos; で一覧表示されます。</translation>
    </message>
    <message>
        <source>Several updates to version %1 fit %2; take a package that holds one of them only.</source>
        <translation>%2 に適合するバージョン %1 の更新が複数あります。そのうち 1 つだけを含むパッケージを使用してください。</translation>
    </message>
    <message>
        <source>upgrade</source>
        <translation>アップグレード</translation>
    </message>
    <message>
        <source>downgrade</source>
        <translation>ダウングレード</translation>
    </message>
    <message>
        <source>the same version again</source>
        <translation>同じバージョンの再書き込み</translation>
    </message>
    <message>
        <source>not known whether newer</source>
        <translation>新しいかどうか不明</translation>
    </message>
    <message>
        <source>This may be a downgrade, and there is no terminal to ask on; agree with --yes.</source>
        <translation>ダウングレードの可能性がありますが、確認するための端末がありません。--yes で同意してください。</translation>
    </message>
    <message>
        <source>The camera would get an older version, or one that may be older. Go on? [y/N]</source>
        <translation>カメラには古いバージョン、または古い可能性のあるバージョンが書き込まれます。続行しますか? [y/N]</translation>
    </message>
    <message>
        <source>Nothing was changed.</source>
        <translation>何も変更されていません。</translation>
    </message>
    <message>
        <source>Interrupted: the update ends when the present step is done. Leave the camera switched on.</source>
        <translation>中断されました。現在のステップが終わると更新を終了します。カメラの電源を切らないでください。</translation>
    </message>
    <message>
        <source>Still waiting for the end of the present step. Leave the camera switched on.</source>
        <translation>現在のステップの終了を待っています。カメラの電源を切らないでください。</translation>
    </message>
    <message>
        <source>%1: firmware %2 -&gt; %3 (%4)</source>
        <translation>%1: ファームウェア %2 -&gt; %3 (%4)</translation>
    </message>
    <message>
        <source>The update of %1 did not complete: %2</source>
        <translation>%1 の更新は完了しませんでした: %2</translation>
    </message>
    <message>
        <source>Nothing was written to the camera.</source>
        <translation>カメラには何も書き込まれていません。</translation>
    </message>
    <message>
        <source>The camera has firmware %1.</source>
        <translation>カメラのファームウェアは %1 です。</translation>
    </message>
    <message>
        <source>Which firmware the camera has is not known: switch it off and on, look for it with &apos;poolcli list&apos;, and update it again.</source>
        <translation>カメラのファームウェアは不明です。カメラの電源を入れ直し、&apos;poolcli list&apos; で確認してから、もう一度更新してください。</translation>
    </message>
    <message>
        <source>%1 was updated, but cannot be reached: %2</source>
        <translation>%1 は更新されましたが、接続できません: %2</translation>
    </message>
    <message>
        <source>%1 has firmware %2 now.</source>
        <translation>%1 のファームウェアは %2 になりました。</translation>
    </message>
    <message>
        <source>%1 was made.</source>
        <translation>%1 を作成しました。</translation>
    </message>
    <message>
        <source>Checking the camera</source>
        <translation>カメラを確認しています</translation>
    </message>
    <message>
        <source>Reading the package</source>
        <translation>パッケージを読み込んでいます</translation>
    </message>
    <message>
        <source>Writing a feature</source>
        <translation>機能に書き込んでいます</translation>
    </message>
    <message>
        <source>Executing a command</source>
        <translation>コマンドを実行しています</translation>
    </message>
    <message>
        <source>Checking a feature</source>
        <translation>機能を確認しています</translation>
    </message>
    <message>
        <source>Uploading a file</source>
        <translation>ファイルを転送しています</translation>
    </message>
    <message>
        <source>Restarting the camera</source>
        <translation>カメラを再起動しています</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>更新しています</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>Estimated time: %1</source>
        <translation>推定時間: %1</translation>
    </message>
</context>
</TS>
