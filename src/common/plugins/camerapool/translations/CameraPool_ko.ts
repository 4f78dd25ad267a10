<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR" sourcelanguage="en_US">
<context>
    <name>Plugin::CameraPool::Internal::CCamera</name>
    <message>
        <source>Camera object has been disposed.</source>
        <translation>카메라 개체가 이미 삭제되었습니다.</translation>
    </message>
    <message>
        <source>Action cannot be performed. The camera instance is in use.</source>
        <translation>작업을 수행할 수 없습니다. 카메라 인스턴스가 사용 중입니다.</translation>
    </message>
    <message>
        <source>Action cannot be performed. The stream grabber is still in use.</source>
        <translation>작업을 수행할 수 없습니다. 스트림 그래버가 아직 사용 중입니다.</translation>
    </message>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>알 수 없는 압축 모드가 발견되었습니다.</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>잘못된 압축 설명자 크기가 발견되었습니다.</translation>
    </message>
    <message>
        <source>Invalid compression descriptor hash size found.</source>
        <translation>잘못된 압축 설명자 해시 크기가 발견되었습니다.</translation>
    </message>
    <message>
        <source>Invalid image size for decompression found.</source>
        <translation>잘못된 압축 해제용 이미지 크기가 발견되었습니다.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraNodeDataModel</name>
    <message>
        <source>A camera source node cannot be created: the given record is not that of a camera.</source>
        <translation>카메라 소스 노드를 만들 수 없습니다. 지정된 레코드가 카메라의 레코드가 아닙니다.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CCameraPool</name>
    <message>
        <source>No camera found for the provided camera info.</source>
        <translation>제공된 카메라 정보에 해당하는 카메라를 찾을 수 없습니다.</translation>
    </message>
    <message>
        <source>No active camera available at the moment.</source>
        <translation>현재 사용할 수 있는 활성 카메라가 없습니다.</translation>
    </message>
    <message>
        <source>The camera with the provided info is not available because it has been opened in exclusive mode.</source>
        <translation>제공된 정보의 카메라는 단독 모드로 열려 있어 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>No GigE transport layer found.</source>
        <translation>GigE 전송 계층을 찾을 수 없습니다.</translation>
    </message>
    <message>
        <source>Failed to find camera. Check the IP configuration.</source>
        <translation>카메라를 찾지 못했습니다. IP 구성을 확인하십시오.</translation>
    </message>
    <message>
        <source>The image grab failed.</source>
        <translation>이미지 획득에 실패했습니다.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdate</name>
    <message>
        <source>The firmware update was interrupted between two steps. What was done so far stays; apply the update again to complete it.</source>
        <translation>펌웨어 업데이트가 두 단계 사이에서 중단되었습니다. 지금까지 수행된 내용은 유지됩니다. 완료하려면 업데이트를 다시 적용하십시오.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CDeviceFirmwareUpdateService</name>
    <message>
        <source>Failed to acquire exclusive camera access.</source>
        <translation>카메라의 독점 액세스를 얻지 못했습니다.</translation>
    </message>
    <message>
        <source>Unexpected exception caught. Failed to get the list of matching firmware updates.</source>
        <translation>예기치 않은 예외가 발생했습니다. 일치하는 펌웨어 업데이트 목록을 가져오지 못했습니다.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CImageDecompressorService</name>
    <message>
        <source>Unknown compression mode found.</source>
        <translation>알 수 없는 압축 모드가 발견되었습니다.</translation>
    </message>
    <message>
        <source>Invalid compression descriptor size found.</source>
        <translation>잘못된 압축 설명자 크기가 발견되었습니다.</translation>
    </message>
</context>
<context>
    <name>Plugin::CameraPool::Internal::CInterface</name>
    <message>
        <source>The transport layer &quot;%1&quot; could not be created.</source>
        <translation>전송 계층 &quot;%1&quot;을(를) 만들 수 없습니다.</translation>
    </message>
    <message>
        <source>There is no interface &quot;%1&quot;.</source>
        <translation>인터페이스 &quot;%1&quot;을(를) 찾을 수 없습니다.</translation>
    </message>
</context>
</TS>
