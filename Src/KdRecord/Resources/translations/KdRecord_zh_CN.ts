<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>KAdvanceSettings</name>
    <message>
        <source>Advanced</source>
        <translation>高级设置</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>KAudioRecordPreviewWidget</name>
    <message>
        <source>Open the Recording Preview Window</source>
        <translation>打开录制预览窗口</translation>
    </message>
    <message>
        <source>Close the Recording Preview Window</source>
        <translation>关闭录制预览窗口</translation>
    </message>
    <message>
        <source>Recording&#xa0;preview</source>
        <translation>录制预览</translation>
    </message>
</context>
<context>
    <name>KAudioSettings</name>
    <message>
        <source>Audio</source>
        <translation>音频</translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation>编码器</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>声道</translation>
    </message>
    <message>
        <source>Sample Rate</source>
        <translation>采样率</translation>
    </message>
    <message>
        <source>Bit Rate</source>
        <translation>比特率</translation>
    </message>
    <message>
        <source>Bitrate Mode</source>
        <translation>比特率模式</translation>
    </message>
    <message>
        <source>Bitrate mode affects audio quality and file size.Use CBR for stable streaming, VBR for better quality, and ABR for balanced control.</source>
        <translation>比特率模式会影响音频质量和文件大小。CBR 适合稳定的流媒体传输，VBR 可获得更好的音质，ABR 则在两者之间取得平衡。</translation>
    </message>
    <message>
        <source>AAC</source>
        <translation>AAC</translation>
    </message>
    <message>
        <source>Mono</source>
        <translation>单声道</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>立体声</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>CBR</source>
        <translation>CBR</translation>
    </message>
    <message>
        <source>CBR mode is on. We&apos;ve automatically applied the optimal settings for you.</source>
        <translation>CBR 模式已开启，已自动为您应用最佳设置。</translation>
    </message>
</context>
<context>
    <name>KOldMessageDialog</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
</context>
<context>
    <name>KdAudioVolumeWidget</name>
    <message>
        <source>Input level</source>
        <translation>输入电平</translation>
    </message>
</context>
<context>
    <name>KdMinimumTake</name>
    <message>
        <source>The recording is too short. Data cannot be saved.</source>
        <translation>录制时间过短，无法保存数据。</translation>
    </message>
</context>
<context>
    <name>KdOpenFileLineEdit</name>
    <message>
        <source>Choose a folder</source>
        <translation>选择文件夹</translation>
    </message>
</context>
<context>
    <name>KdOutputFolderCheck</name>
    <message>
        <source>There is only %1MB space in the specified output directory, Would you choose another directory?</source>
        <translation>指定的输出目录仅剩 %1MB 空间，是否选择其他目录？</translation>
    </message>
    <message>
        <source>Please check whether you have permission to write or read on the path, or choose other path to create.</source>
        <translation>请检查您是否有权限读写该路径，或选择其他路径。</translation>
    </message>
</context>
<context>
    <name>KdTitleBar</name>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
</TS>
