<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Report</name>
    <message>
        <source>, </source>
        <translation>、</translation>
    </message>
    <message>
        <source>name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>package</source>
        <translation>软件包</translation>
    </message>
    <message>
        <source>version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>minimum SDK</source>
        <translation>最低系统版本</translation>
    </message>
    <message>
        <source>target SDK</source>
        <translation>目标系统版本</translation>
    </message>
    <message>
        <source>size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>unpacked</source>
        <translation>解压后</translation>
    </message>
    <message>
        <source>code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>libraries</source>
        <translation>程序库</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>资源</translation>
    </message>
    <message>
        <source>other files</source>
        <translation>其他文件</translation>
    </message>
    <message>
        <source>asks for</source>
        <translation>需要授权</translation>
    </message>
    <message>
        <source>no group</source>
        <translation>未分组</translation>
    </message>
    <message>
        <source>in settings</source>
        <translation>在设置中授权</translation>
    </message>
    <message>
        <source>gets</source>
        <translation>自动获得</translation>
    </message>
    <message>
        <source>requests</source>
        <translation>请求</translation>
    </message>
    <message>
        <source>%1 more, which --all shows</source>
        <translation>另有 %1 项，用 --all 显示</translation>
    </message>
    <message>
        <source>optional</source>
        <translation>可选</translation>
    </message>
    <message>
        <source>implied: %1</source>
        <translation>隐含：%1</translation>
    </message>
    <message>
        <source>needs</source>
        <translation>需要</translation>
    </message>
    <message>
        <source>can use</source>
        <translation>可使用</translation>
    </message>
    <message>
        <source>implies</source>
        <translation>隐含要求</translation>
    </message>
    <message>
        <source>processors</source>
        <translation>处理器</translation>
    </message>
    <message>
        <source>languages</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 及另外 %2 种</translation>
    </message>
    <message>
        <source>splits</source>
        <translation>拆分包</translation>
    </message>
    <message>
        <source>launcher</source>
        <translation>启动入口</translation>
    </message>
    <message>
        <source>label</source>
        <translation>标签</translation>
    </message>
    <message>
        <source>icons</source>
        <translation>图标</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
</context>
<context>
    <name>AndroidVersion</name>
    <message>
        <source>a preview of Android</source>
        <translation>Android 预览版</translation>
    </message>
    <message>
        <source>%1 and later</source>
        <translation>%1 及更高版本</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 至 %2</translation>
    </message>
</context>
<context>
    <name>Feature</name>
    <message>
        <source>sound with low latency</source>
        <translation>低延迟音频</translation>
    </message>
    <message>
        <source>sound output</source>
        <translation>音频输出</translation>
    </message>
    <message>
        <source>professional sound</source>
        <translation>专业音频</translation>
    </message>
    <message>
        <source>camera on the back</source>
        <translation>后置摄像头</translation>
    </message>
    <message>
        <source>any camera</source>
        <translation>任意摄像头</translation>
    </message>
    <message>
        <source>camera with autofocus</source>
        <translation>自动对焦摄像头</translation>
    </message>
    <message>
        <source>external camera</source>
        <translation>外接摄像头</translation>
    </message>
    <message>
        <source>camera with a flash</source>
        <translation>带闪光灯的摄像头</translation>
    </message>
    <message>
        <source>camera on the front</source>
        <translation>前置摄像头</translation>
    </message>
    <message>
        <source>infrared transmitter</source>
        <translation>红外发射器</translation>
    </message>
    <message>
        <source>wired network</source>
        <translation>有线网络</translation>
    </message>
    <message>
        <source>pointer or touch screen</source>
        <translation>指针设备或触摸屏</translation>
    </message>
    <message>
        <source>fingerprint reader</source>
        <translation>指纹识别器</translation>
    </message>
    <message>
        <source>game controller</source>
        <translation>游戏手柄</translation>
    </message>
    <message>
        <source>location</source>
        <translation>位置信息</translation>
    </message>
    <message>
        <source>satellite positioning</source>
        <translation>卫星定位</translation>
    </message>
    <message>
        <source>location by networks</source>
        <translation>网络定位</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>麦克风</translation>
    </message>
    <message>
        <source>screen in landscape</source>
        <translation>横向屏幕</translation>
    </message>
    <message>
        <source>screen in portrait</source>
        <translation>纵向屏幕</translation>
    </message>
    <message>
        <source>accelerometer</source>
        <translation>加速度计</translation>
    </message>
    <message>
        <source>barometer</source>
        <translation>气压计</translation>
    </message>
    <message>
        <source>compass</source>
        <translation>指南针</translation>
    </message>
    <message>
        <source>gyroscope</source>
        <translation>陀螺仪</translation>
    </message>
    <message>
        <source>light sensor</source>
        <translation>光线传感器</translation>
    </message>
    <message>
        <source>proximity sensor</source>
        <translation>距离传感器</translation>
    </message>
    <message>
        <source>step counter</source>
        <translation>计步器</translation>
    </message>
    <message>
        <source>telephone</source>
        <translation>电话</translation>
    </message>
    <message>
        <source>touch screen</source>
        <translation>触摸屏</translation>
    </message>
    <message>
        <source>car</source>
        <translation>车载系统</translation>
    </message>
    <message>
        <source>television</source>
        <translation>电视</translation>
    </message>
    <message>
        <source>watch</source>
        <translation>手表</translation>
    </message>
    <message>
        <source>television interface</source>
        <translation>电视界面</translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>widgets</source>
        <translation>微件</translation>
    </message>
    <message>
        <source>live wallpapers</source>
        <translation>动态壁纸</translation>
    </message>
    <message>
        <source>input methods</source>
        <translation>输入法</translation>
    </message>
    <message>
        <source>printing</source>
        <translation>打印</translation>
    </message>
</context>
</TS>
