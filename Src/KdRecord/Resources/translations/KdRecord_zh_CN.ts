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
    <name>KComboboxExt</name>
    <message>
        <source>Explanation</source>
        <translation>说明</translation>
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
    <name>KRecordPreViewSettingRadiusWidget</name>
    <message>
        <source>Switch to Square</source>
        <translation>切换为方形</translation>
    </message>
    <message>
        <source>Switch to Circle</source>
        <translation>切换为圆形</translation>
    </message>
    <message>
        <source>Blur Background</source>
        <translation>虚化背景</translation>
    </message>
    <message>
        <source>Remove Background</source>
        <translation>移除背景</translation>
    </message>
    <message>
        <source>Flip</source>
        <translation>翻转</translation>
    </message>
    <message>
        <source>Selected</source>
        <translation>已选择</translation>
    </message>
</context>
<context>
    <name>KVideoSettings</name>
    <message>
        <source>Video</source>
        <translation>视频</translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation>编码器</translation>
    </message>
    <message>
        <source>Frame Rate</source>
        <translation>帧率</translation>
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
        <source>Quality</source>
        <translation>质量</translation>
    </message>
    <message>
        <source>H264</source>
        <translation>H264</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 fps</translation>
    </message>
    <message>
        <source>VBR</source>
        <translation>VBR</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
</context>
<context>
    <name>KdAnnouncer</name>
    <message>
        <source>Countdown stopped</source>
        <translation>倒计时已取消</translation>
    </message>
    <message>
        <source>Recording started</source>
        <translation>录制已开始</translation>
    </message>
    <message>
        <source>Recording resumed</source>
        <translation>录制已继续</translation>
    </message>
    <message>
        <source>Recording stopped</source>
        <translation>录制已停止</translation>
    </message>
    <message>
        <source>No device is connected</source>
        <translation>未连接任何设备</translation>
    </message>
</context>
<context>
    <name>KdAudioDeviceBoxes</name>
    <message>
        <source>Input Audio</source>
        <translation>音频输入</translation>
    </message>
    <message>
        <source>Connect a microphone and press Refresh Device</source>
        <translation>请连接麦克风并点击“刷新设备”</translation>
    </message>
</context>
<context>
    <name>KdAudioRecordPanelUi</name>
    <message>
        <source>Record Time</source>
        <translation>录制时间</translation>
    </message>
    <message>
        <source>Input level</source>
        <translation>输入电平</translation>
    </message>
    <message>
        <source>Audio Device</source>
        <translation>音频设备</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>Save to</source>
        <translation>保存到</translation>
    </message>
    <message>
        <source>Count Down</source>
        <translation>倒计时</translation>
    </message>
    <message>
        <source>sec</source>
        <translation>秒</translation>
    </message>
    <message>
        <source>Mute Project</source>
        <translation>项目静音</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Advanced</source>
        <translation>高级</translation>
    </message>
    <message>
        <source>Refresh Device</source>
        <translation>刷新设备</translation>
    </message>
    <message>
        <source>Re-record</source>
        <translation>重新录制</translation>
    </message>
</context>
<context>
    <name>KdAudioRecordView</name>
    <message>
        <source>Record Audio</source>
        <translation>录制音频</translation>
    </message>
    <message>
        <source>Open recorder</source>
        <translation>打开录音机</translation>
    </message>
    <message>
        <source>Quit recorder</source>
        <translation>退出录音机</translation>
    </message>
    <message>
        <source>Stop recording</source>
        <translation>停止录制</translation>
    </message>
    <message>
        <source>Resume recording</source>
        <translation>继续录制</translation>
    </message>
    <message>
        <source>Start recording</source>
        <translation>开始录制</translation>
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
    <name>KdCountCtrl</name>
    <message>
        <source>Recording starts in %1</source>
        <translation>%1 秒后开始录制</translation>
    </message>
</context>
<context>
    <name>KdDeviceBox</name>
    <message>
        <source>No Device</source>
        <translation>没有设备</translation>
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
    <name>KdRecordNotices</name>
    <message>
        <source>No Device</source>
        <translation>没有设备</translation>
    </message>
    <message>
        <source>Unable to record due to an issue with the device.</source>
        <translation>设备出现问题，无法录制。</translation>
    </message>
    <message>
        <source>Audio device %1 connection lost.</source>
        <translation>音频设备 %1 连接已断开。</translation>
    </message>
    <message>
        <source>Recording is paused. Click Resume to continue recording.</source>
        <translation>录制已暂停。点击“继续”以继续录制。</translation>
    </message>
    <message>
        <source>Your audio has been added to the timeline and media library.</source>
        <translation>您的音频已添加到时间轴和媒体库。</translation>
    </message>
    <message>
        <source>Re-recording will overwrite the already recorded content, are you sure?</source>
        <translation>重新录制会覆盖已录制的内容，确定要继续吗？</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Re-record</source>
        <translation>重新录制</translation>
    </message>
    <message>
        <source>The recording has ended because the disk is full. What was recorded until then has been saved.</source>
        <translation>磁盘已满，录制已结束。此前录制的内容已保存。</translation>
    </message>
    <message>
        <source>The Camera %1 is lost.</source>
        <translation>摄像头 %1 已断开。</translation>
    </message>
    <message>
        <source>Webcam is being used by another application, please close other application and try again.</source>
        <translation>摄像头正被其他应用程序占用，请关闭该应用程序后重试。</translation>
    </message>
</context>
<context>
    <name>KdRecordWidgets</name>
    <message>
        <source>Stop (%1)</source>
        <translation>停止 (%1)</translation>
    </message>
    <message>
        <source>Start (%1)</source>
        <translation>开始 (%1)</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
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
<context>
    <name>KdWebcamFormatChoice</name>
    <message>
        <source>%1 fps</source>
        <translation>%1 fps</translation>
    </message>
</context>
<context>
    <name>KdWebcamRecordPanel</name>
    <message>
        <source>Live Record</source>
        <translation>实时画面</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>正在录制</translation>
    </message>
    <message>
        <source>No Device</source>
        <translation>没有设备</translation>
    </message>
    <message>
        <source>Close the Recording Preview Window</source>
        <translation>关闭录制预览窗口</translation>
    </message>
    <message>
        <source>Open the Recording Preview Window</source>
        <translation>打开录制预览窗口</translation>
    </message>
</context>
<context>
    <name>KdWebcamRecordPanelUi</name>
    <message>
        <source>Record Time:</source>
        <translation>录制时间：</translation>
    </message>
    <message>
        <source>Video Device:</source>
        <translation>视频设备：</translation>
    </message>
    <message>
        <source>Audio:</source>
        <translation>音频：</translation>
    </message>
    <message>
        <source>Resolution:</source>
        <translation>分辨率：</translation>
    </message>
    <message>
        <source>Frame Rate:</source>
        <translation>帧率：</translation>
    </message>
    <message>
        <source>Count Down:</source>
        <translation>倒计时：</translation>
    </message>
    <message>
        <source>sec</source>
        <translation>秒</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Re-record</source>
        <translation>重新录制</translation>
    </message>
    <message>
        <source>Input level</source>
        <translation>输入电平</translation>
    </message>
    <message>
        <source>Webcam picture</source>
        <translation>摄像头画面</translation>
    </message>
    <message>
        <source>Connect a webcam, and its picture appears here</source>
        <translation>连接摄像头后，画面将显示在此处</translation>
    </message>
</context>
<context>
    <name>KdWebcamRecordView</name>
    <message>
        <source>Capture Video</source>
        <translation>录制视频</translation>
    </message>
</context>
<context>
    <name>KdWebcamTakeReport</name>
    <message>
        <source>remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>blur</source>
        <translation>模糊</translation>
    </message>
    <message>
        <source>circle</source>
        <translation>圆形</translation>
    </message>
    <message>
        <source>square</source>
        <translation>方形</translation>
    </message>
</context>
<context>
    <name>StudioAudioSettingsDialog</name>
    <message>
        <source>Audio settings</source>
        <translation>音频设置</translation>
    </message>
</context>
<context>
    <name>StudioDevicePane</name>
    <message>
        <source>%1 (current)</source>
        <translation>%1（当前）</translation>
    </message>
    <message>
        <source>%1 (disconnected)</source>
        <translation>%1（已断开）</translation>
    </message>
    <message>
        <source>%1 was connected.</source>
        <translation>%1 已连接。</translation>
    </message>
    <message>
        <source>%1 was disconnected.</source>
        <translation>%1 已断开。</translation>
    </message>
    <message>
        <source>Another program is using the camera.</source>
        <translation>另一个程序正在使用摄像头。</translation>
    </message>
    <message>
        <source>Press one to make it the current one.</source>
        <translation>点击即可设为当前设备。</translation>
    </message>
    <message>
        <source>Connect a camera: it appears here by itself.</source>
        <translation>请连接摄像头，它会自动出现在这里。</translation>
    </message>
    <message>
        <source>Connect a microphone: it appears here by itself.</source>
        <translation>请连接麦克风，它会自动出现在这里。</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>摄像头</translation>
    </message>
    <message>
        <source>Microphones</source>
        <translation>麦克风</translation>
    </message>
</context>
<context>
    <name>StudioDevicesDialog</name>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>What is current here is for this window alone: each recorder keeps its own choice.</source>
        <translation>此处的当前设备仅用于本窗口，各录制器保留自己的选择。</translation>
    </message>
</context>
<context>
    <name>StudioEmptyState</name>
    <message>
        <source>Choose a take</source>
        <translation>选择一段录音</translation>
    </message>
    <message>
        <source>Click one in the list to see and hear it.</source>
        <translation>点击列表中的一段即可查看和收听。</translation>
    </message>
    <message>
        <source>Record your first take</source>
        <translation>录制你的第一段</translation>
    </message>
    <message>
        <source>Press “Record voice-over” and speak, or “Record webcam” and show yourself. The take appears in the list and on the timeline.</source>
        <translation>按下“录制旁白”开始说话，或按下“录制摄像头”出镜。录制结果会出现在列表和时间线中。</translation>
    </message>
</context>
<context>
    <name>StudioHeader</name>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>Use the light skin</source>
        <translation>使用浅色外观</translation>
    </message>
    <message>
        <source>Use the dark skin</source>
        <translation>使用深色外观</translation>
    </message>
    <message>
        <source>Devices and settings</source>
        <translation>设备和设置</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>设备</translation>
    </message>
    <message>
        <source>Audio settings</source>
        <translation>音频设置</translation>
    </message>
    <message>
        <source>Video settings</source>
        <translation>视频设置</translation>
    </message>
</context>
<context>
    <name>StudioMediaProbe</name>
    <message>
        <source>Its length is unknown.</source>
        <translation>长度未知。</translation>
    </message>
    <message>
        <source>The media framework cannot look into files.</source>
        <translation>媒体框架无法检查文件。</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>没有这个文件。</translation>
    </message>
    <message>
        <source>It may not be read.</source>
        <translation>没有读取权限。</translation>
    </message>
    <message>
        <source>It is empty.</source>
        <translation>文件是空的。</translation>
    </message>
    <message>
        <source>The media framework cannot be started.</source>
        <translation>媒体框架无法启动。</translation>
    </message>
    <message>
        <source>There is neither sound nor a moving picture in it.</source>
        <translation>其中既没有声音，也没有活动画面。</translation>
    </message>
    <message>
        <source>It is neither sound nor a clip.</source>
        <translation>它既不是声音文件，也不是视频片段。</translation>
    </message>
</context>
<context>
    <name>StudioPlayer</name>
    <message>
        <source>The sound output cannot be opened.</source>
        <translation>无法打开声音输出。</translation>
    </message>
    <message>
        <source>The media framework cannot be started.</source>
        <translation>媒体框架无法启动。</translation>
    </message>
    <message>
        <source>Nothing can be played: the element &quot;%1&quot; is missing.</source>
        <translation>无法播放：缺少组件“%1”。</translation>
    </message>
</context>
<context>
    <name>StudioRecoveryBar</name>
    <message>
        <source>Repair</source>
        <translation>修复</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>稍后</translation>
    </message>
    <message>
        <source>An unfinished recording was found</source>
        <translation>发现一段未完成的录音</translation>
    </message>
    <message numerus="yes">
        <source>%n unfinished recordings were found</source>
        <translation>
            <numerusform>发现 %n 段未完成的录音</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, begun %2. It can be repaired and added to the takes.</source>
        <translation>%1，开始于 %2。可以修复并加入录音列表。</translation>
    </message>
    <message>
        <source>%1 could not be dealt with. %2</source>
        <translation>无法处理 %1。%2</translation>
    </message>
    <message>
        <source>Discarding deletes what was recorded. Are you sure?</source>
        <translation>放弃会删除已录制的内容，确定要继续吗？</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>The unfinished recording stays as it is and is offered again at the next start.</source>
        <translation>未完成的录音保持原样，下次启动时会再次提示。</translation>
    </message>
    <message>
        <source>%1 was repaired.</source>
        <translation>%1 已修复。</translation>
    </message>
    <message>
        <source>Nothing had been recorded in %1 yet.</source>
        <translation>%1 中尚未录到任何内容。</translation>
    </message>
    <message>
        <source>It could not be deleted.</source>
        <translation>无法删除。</translation>
    </message>
    <message>
        <source>%1 was discarded.</source>
        <translation>%1 已放弃。</translation>
    </message>
    <message>
        <source>Its folder is not writable, or another program is working on it.</source>
        <translation>其文件夹不可写，或另一个程序正在处理它。</translation>
    </message>
    <message>
        <source>It is not unfinished any more.</source>
        <translation>它已不再是未完成的录制。</translation>
    </message>
    <message>
        <source>The file cannot be opened.</source>
        <translation>无法打开该文件。</translation>
    </message>
    <message>
        <source>The file was not written by this program.</source>
        <translation>该文件不是由本程序写入的。</translation>
    </message>
    <message>
        <source>There is not enough space on the disk.</source>
        <translation>磁盘空间不足。</translation>
    </message>
    <message>
        <source>The disk refuses the change.</source>
        <translation>磁盘拒绝了更改。</translation>
    </message>
    <message>
        <source>The file is damaged and is left as it is.</source>
        <translation>该文件已损坏，将保持原样。</translation>
    </message>
    <message>
        <source>It is empty and cannot be removed.</source>
        <translation>它是空的，且无法移除。</translation>
    </message>
    <message>
        <source>It was interrupted.</source>
        <translation>操作被中断。</translation>
    </message>
</context>
<context>
    <name>StudioSettingsDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
</context>
<context>
    <name>StudioTakeDetails</name>
    <message>
        <source>What the recorder reported</source>
        <translation>录音机报告的内容</translation>
    </message>
    <message>
        <source>The file is no longer there. Put it back and the take can be played again.</source>
        <translation>文件已不在原处。放回后即可再次播放。</translation>
    </message>
    <message>
        <source>The file cannot be read. %1</source>
        <translation>文件无法读取。%1</translation>
    </message>
    <message>
        <source>Looking into the file…</source>
        <translation>正在检查文件…</translation>
    </message>
    <message>
        <source>Nothing: this take was recovered after the recorder had been interrupted.</source>
        <translation>无：这段录音是在录音机中断后恢复的。</translation>
    </message>
    <message>
        <source>Picture of the clip</source>
        <translation>片段画面</translation>
    </message>
</context>
<context>
    <name>StudioTakeLibrary</name>
    <message>
        <source>The takes folder &quot;%1&quot; cannot be made.</source>
        <translation>无法创建录音文件夹“%1”。</translation>
    </message>
    <message>
        <source>The list of takes cannot be read; it was put aside as &quot;%1&quot;.</source>
        <translation>无法读取录音列表；已另存为“%1”。</translation>
    </message>
    <message>
        <source>The list of takes cannot be saved in &quot;%1&quot;.</source>
        <translation>无法将录音列表保存到“%1”。</translation>
    </message>
</context>
<context>
    <name>StudioTakeModel</name>
    <message>
        <source>%1, %2</source>
        <translation>%1，%2</translation>
    </message>
    <message>
        <source>The file is missing</source>
        <translation>文件缺失</translation>
    </message>
    <message>
        <source>The file cannot be read</source>
        <translation>文件无法读取</translation>
    </message>
</context>
<context>
    <name>StudioTakePane</name>
    <message>
        <source>Takes</source>
        <translation>录音</translation>
    </message>
    <message>
        <source>Record voice-over</source>
        <translation>录制配音</translation>
    </message>
    <message>
        <source>Remove from list</source>
        <translation>从列表中移除</translation>
    </message>
    <message>
        <source>Takes that you record are listed here.</source>
        <translation>您录制的内容会列在这里。</translation>
    </message>
    <message>
        <source>Record webcam</source>
        <translation>录制摄像头</translation>
    </message>
</context>
<context>
    <name>StudioTimeline</name>
    <message>
        <source>Timeline</source>
        <translation>时间轴</translation>
    </message>
    <message>
        <source>Takes line up here</source>
        <translation>录音会排列在这里</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>录制中</translation>
    </message>
</context>
<context>
    <name>StudioTransport</name>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Muted by the recorder</source>
        <translation>已被录音机静音</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
</context>
<context>
    <name>StudioUsageView</name>
    <message>
        <source>Usage events</source>
        <translation>使用事件</translation>
    </message>
    <message>
        <source>What is used in the recorder appears here. It stays on this machine.</source>
        <translation>录制器中使用的功能会显示在这里。这些信息只留在本机。</translation>
    </message>
</context>
<context>
    <name>StudioVideoSettingsDialog</name>
    <message>
        <source>Video settings</source>
        <translation>视频设置</translation>
    </message>
</context>
<context>
    <name>StudioWaveformView</name>
    <message>
        <source>Waveform</source>
        <translation>波形</translation>
    </message>
</context>
<context>
    <name>StudioWindow</name>
    <message>
        <source>%1 was added.</source>
        <translation>已添加 %1。</translation>
    </message>
    <message>
        <source>The recording was not kept; there is nothing to add.</source>
        <translation>录音未保留，没有可添加的内容。</translation>
    </message>
    <message>
        <source>%1 was not added. %2</source>
        <translation>未添加 %1。%2</translation>
    </message>
    <message>
        <source>The recording could not begin.</source>
        <translation>录制无法开始。</translation>
    </message>
    <message>
        <source>Playing is not possible. %1</source>
        <translation>无法播放。%1</translation>
    </message>
    <message>
        <source>Takes are kept in %1</source>
        <translation>录音保存在 %1</translation>
    </message>
    <message>
        <source>%1 frames per second</source>
        <translation>每秒 %1 帧</translation>
    </message>
    <message>
        <source>Recording…</source>
        <translation>正在录制…</translation>
    </message>
    <message>
        <source>Take</source>
        <translation>录音</translation>
    </message>
    <message>
        <source>Usage events</source>
        <translation>使用事件</translation>
    </message>
    <message>
        <source>The recorder is at work</source>
        <translation>录音机正在工作</translation>
    </message>
    <message>
        <source>The project is locked until the take is over.</source>
        <translation>录制结束前项目已锁定。</translation>
    </message>
</context>
</TS>
