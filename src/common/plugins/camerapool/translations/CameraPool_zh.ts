<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>Plugin::CameraPool::Internal::CCamera</name>
    <message>
        <source>Camera object has been disposed.</source>
        <translation>相机对象已被释放。</translation>
    </message>
    <message>
        <source>Action cannot be performed. The camera instance is in use.</source>
        <translation>无法执行操作。相机实例正在使用中。</translation>
    </message>
    <message>
        <source>Action cannot be performed. The stream grabber is still in use.</source>
        <translation>无法执行操作。流抓取器仍在使用中。</translation>
    </message>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>发现未知的压缩模式。</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>发现无效的压缩描述符大小。</translation>
    </message>
    <message>
        <source>Invalid compression descriptor hash size found.</source>
        <translation>发现无效的压缩描述符哈希大小。</translation>
    </message>
    <message>
        <source>Invalid image size for decompression found.</source>
        <translation>发现无效的解压缩图像大小。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraNodeDataModel</name>
    <message>
        <source>A camera source node cannot be created: the given record is not that of a camera.</source>
        <translation>无法创建相机源节点：所给的记录不是相机的记录。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraPool</name>
    <message>
        <source>No camera found for the provided camera info.</source>
        <translation>找不到与所提供的相机信息对应的相机。</translation>
    </message>
    <message>
        <source>No active camera available at the moment.</source>
        <translation>目前没有可用的活动相机。</translation>
    </message>
    <message>
        <source>The camera with the provided info is not available because it has been opened in exclusive mode.</source>
        <translation>所提供信息对应的相机已以独占模式打开，因此不可用。</translation>
    </message>
    <message>
        <source>No GigE transport layer found.</source>
        <translation>找不到 GigE 传输层。</translation>
    </message>
    <message>
        <source>Failed to find camera. Check the IP configuration.</source>
        <translation>未找到相机。请检查 IP 配置。</translation>
    </message>
    <message>
        <source>The image grab failed.</source>
        <translation>图像采集失败。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdate</name>
    <message>
        <source>The firmware update was interrupted between two steps. What was done so far stays; apply the update again to complete it.</source>
        <translation>固件更新在两个步骤之间被中断。已完成的内容将保留；请再次应用更新以完成。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdateService</name>
    <message>
        <source>Failed to acquire exclusive camera access.</source>
        <translation>无法获得相机的独占访问权。</translation>
    </message>
    <message>
        <source>Unexpected exception caught. Failed to get the list of matching firmware updates.</source>
        <translation>捕获到意外异常。无法获取匹配的固件更新列表。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CImageDecompressorService</name>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>发现未知的压缩模式。</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>发现无效的压缩描述符大小。</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CInterface</name>
    <message>
        <source>The transport layer &quot;%1&quot; could not be created.</source>
        <translation>无法创建传输层“%1”。</translation>
    </message>
    <message>
        <source>There is no interface &quot;%1&quot;.</source>
        <translation>找不到接口“%1”。</translation>
    </message>
</context>
</TS>
