<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en_US">
<context>
    <name>Plugin::CameraPool::Internal::CCamera</name>
    <message>
        <source>Camera object has been disposed.</source>
        <translation>カメラ オブジェクトは破棄されています。</translation>
    </message>
    <message>
        <source>Action cannot be performed. The camera instance is in use.</source>
        <translation>操作を実行できません。カメラ インスタンスは使用中です。</translation>
    </message>
    <message>
        <source>Action cannot be performed. The stream grabber is still in use.</source>
        <translation>操作を実行できません。ストリーム グラバーはまだ使用中です。</translation>
    </message>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>不明な圧縮モードが見つかりました。</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>無効な圧縮記述子サイズが見つかりました。</translation>
    </message>
    <message>
        <source>Invalid compression descriptor hash size found.</source>
        <translation>無効な圧縮記述子ハッシュサイズが見つかりました。</translation>
    </message>
    <message>
        <source>Invalid image size for decompression found.</source>
        <translation>無効な展開用画像サイズが見つかりました。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraNodeDataModel</name>
    <message>
        <source>A camera source node cannot be created: the given record is not that of a camera.</source>
        <translation>カメラソースノードを作成できません。指定されたレコードはカメラのものではありません。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraPool</name>
    <message>
        <source>No camera found for the provided camera info.</source>
        <translation>指定されたカメラ情報に対応するカメラが見つかりません。</translation>
    </message>
    <message>
        <source>No active camera available at the moment.</source>
        <translation>現在、アクティブなカメラはありません。</translation>
    </message>
    <message>
        <source>The camera with the provided info is not available because it has been opened in exclusive mode.</source>
        <translation>指定されたカメラは排他モードで開かれているため、使用できません。</translation>
    </message>
    <message>
        <source>No GigE transport layer found.</source>
        <translation>GigE トランスポート層が見つかりません。</translation>
    </message>
    <message>
        <source>Failed to find camera. Check the IP configuration.</source>
        <translation>カメラが見つかりませんでした。IP 設定を確認してください。</translation>
    </message>
    <message>
        <source>The image grab failed.</source>
        <translation>画像の取得に失敗しました。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdate</name>
    <message>
        <source>The firmware update was interrupted between two steps. What was done so far stays; apply the update again to complete it.</source>
        <translation>ファームウェアの更新は2つのステップの間で中断されました。これまでに実行された内容は残ります。完了するには、もう一度更新を適用してください。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdateService</name>
    <message>
        <source>Failed to acquire exclusive camera access.</source>
        <translation>カメラの排他アクセスを取得できませんでした。</translation>
    </message>
    <message>
        <source>Unexpected exception caught. Failed to get the list of matching firmware updates.</source>
        <translation>予期しない例外が発生しました。適合するファームウェア更新の一覧を取得できませんでした。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CImageDecompressorService</name>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>不明な圧縮モードが見つかりました。</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>無効な圧縮記述子サイズが見つかりました。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CInterface</name>
    <message>
        <source>The transport layer &quot;%1&quot; could not be created.</source>
        <translation>トランスポート層「%1」を作成できませんでした。</translation>
    </message>
    <message>
        <source>There is no interface &quot;%1&quot;.</source>
        <translation>インターフェイス「%1」が見つかりません。</translation>
    </message>
</context>
</TS>
