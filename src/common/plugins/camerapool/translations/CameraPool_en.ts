<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>Plugin::CameraPool::Internal::CCamera</name>
    <message>
        <source>Camera object has been disposed.</source>
        <translation>Camera object has been disposed.</translation>
    </message>
    <message>
        <source>Action cannot be performed. The camera instance is in use.</source>
        <translation>Action cannot be performed. The camera instance is in use.</translation>
    </message>
    <message>
        <source>Action cannot be performed. The stream grabber is still in use.</source>
        <translation>Action cannot be performed. The stream grabber is still in use.</translation>
    </message>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>Unknown compression mode found.</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>Invalid compression descriptor size found.</translation>
    </message>
    <message>
        <source>Invalid compression descriptor hash size found.</source>
        <translation>Invalid compression descriptor hash size found.</translation>
    </message>
    <message>
        <source>Invalid image size for decompression found.</source>
        <translation>Invalid image size for decompression found.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraNodeDataModel</name>
    <message>
        <source>A camera source node cannot be created: the given record is not that of a camera.</source>
        <translation>A camera source node cannot be created: the given record is not that of a camera.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraPool</name>
    <message>
        <source>No camera found for the provided camera info.</source>
        <translation>No camera found for the provided camera info.</translation>
    </message>
    <message>
        <source>No active camera available at the moment.</source>
        <translation>No active camera available at the moment.</translation>
    </message>
    <message>
        <source>The camera with the provided info is not available because it has been opened in exclusive mode.</source>
        <translation>The camera with the provided info is not available because it has been opened in exclusive mode.</translation>
    </message>
    <message>
        <source>No GigE transport layer found.</source>
        <translation>No GigE transport layer found.</translation>
    </message>
    <message>
        <source>Failed to find camera. Check the IP configuration.</source>
        <translation>Failed to find camera. Check the IP configuration.</translation>
    </message>
    <message>
        <source>The image grab failed.</source>
        <translation>The image grab failed.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdate</name>
    <message>
        <source>The firmware update was interrupted between two steps. What was done so far stays; apply the update again to complete it.</source>
        <translation>The firmware update was interrupted between two steps. What was done so far stays; apply the update again to complete it.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdateService</name>
    <message>
        <source>Failed to acquire exclusive camera access.</source>
        <translation>Failed to acquire exclusive camera access.</translation>
    </message>
    <message>
        <source>Unexpected exception caught. Failed to get the list of matching firmware updates.</source>
        <translation>Unexpected exception caught. Failed to get the list of matching firmware updates.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CImageDecompressorService</name>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>Unknown compression mode found.</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>Invalid compression descriptor size found.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CInterface</name>
    <message>
        <source>The transport layer &quot;%1&quot; could not be created.</source>
        <translation>The transport layer &quot;%1&quot; could not be created.</translation>
    </message>
    <message>
        <source>There is no interface &quot;%1&quot;.</source>
        <translation>There is no interface &quot;%1&quot;.</translation>
    </message>
</context>
</TS>
