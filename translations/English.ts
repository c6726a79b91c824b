<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>AddFileForm</name>
    <message>
        <source>添加文件</source>
        <translation>Add files</translation>
    </message>
    <message>
        <source>点选要添加到打印队列的文件</source>
        <translation>Touch the files to add to the print queue</translation>
    </message>
    <message>
        <source>U盘中没有模型文件</source>
        <translation>No model files on the USB disk</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>正在使用，未添加</source>
        <translation>In use, not added</translation>
    </message>
    <message>
        <source>文件名无效，未添加</source>
        <translation>File name not valid, not added</translation>
    </message>
    <message>
        <source>复制失败，请检查U盘和磁盘空间</source>
        <translation>Copying failed, please check the USB disk and the disk space</translation>
    </message>
    <message>
        <source>文件损坏，无法打印</source>
        <translation>File damaged, cannot be printed</translation>
    </message>
    <message>
        <source>%1个文件已添加，%2个有问题：</source>
        <translation>%1 files added, %2 with problems:</translation>
    </message>
</context>
<context>
    <name>BackgroundService</name>
    <message>
        <source>设置喷头参数异常，请重启</source>
        <translation>Setting the head parameters failed, please restart</translation>
    </message>
    <message>
        <source>检测到喷头异常(%1)，请尝试断电重启(检查 喷头控制板连接)</source>
        <translation>Head fault found (%1), please switch off and on again (check the head board connection)</translation>
    </message>
</context>
<context>
    <name>DebugForm</name>
    <message>
        <source>诊断</source>
        <translation>Diagnosis</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>拉墨站测试</source>
        <translation>Ink station test</translation>
    </message>
    <message>
        <source>打点</source>
        <translation>Print dots</translation>
    </message>
    <message>
        <source>Z轴测试</source>
        <translation>Z axis test</translation>
    </message>
    <message>
        <source>循环挤蜡</source>
        <translation>Repeated wax purge</translation>
    </message>
    <message>
        <source>喷头归一化值</source>
        <translation>Head norm values</translation>
    </message>
    <message>
        <source>喷头</source>
        <translation>Head</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>Material</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Support wax</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Structure wax</translation>
    </message>
    <message>
        <source>偏移量</source>
        <translation>Offset</translation>
    </message>
    <message>
        <source>生成修改值</source>
        <translation>Make edited</translation>
    </message>
    <message>
        <source>写入原始值</source>
        <translation>Write original</translation>
    </message>
    <message>
        <source>写入修改值</source>
        <translation>Write edited</translation>
    </message>
    <message>
        <source>请稍后，准备中...</source>
        <translation>Please wait, preparing...</translation>
    </message>
    <message>
        <source>墨站是否正确放置，运动范围内是否清洁</source>
        <translation>Is the ink station in place, and is its range of motion clean?</translation>
    </message>
    <message>
        <source>X轴错误(%1)</source>
        <translation>X axis error (%1)</translation>
    </message>
    <message>
        <source>关闭弹窗后完成测试</source>
        <translation>The test ends when this window is closed</translation>
    </message>
    <message>
        <source>请稍后，测试即将完成</source>
        <translation>Please wait, the test is ending</translation>
    </message>
    <message>
        <source>测试完成(%1)</source>
        <translation>Test finished (%1)</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Please choose a print file</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>The platform is not in place</translation>
    </message>
    <message>
        <source>是否运动测试？</source>
        <translation>Run the motion test?</translation>
    </message>
    <message>
        <source>测试时注意人工观察是否异常，Z轴即将回零进行0~145000往复运动？</source>
        <translation>Watch for anomalies during the test. Z will home and travel between 0 and 145000. Go on?</translation>
    </message>
    <message>
        <source>请稍后，运动测试即将完成</source>
        <translation>Please wait, the motion test is ending</translation>
    </message>
    <message>
        <source>测试完成，请拷贝日志查看测试次数</source>
        <translation>Test finished. Copy the logs to see the number of rounds</translation>
    </message>
    <message>
        <source>机器处于非空闲状态(打印/暂停)，无法进行此流程</source>
        <translation>The machine is not idle (printing/paused), this routine cannot run</translation>
    </message>
    <message>
        <source>请确认喷头下方没有异物，否则将损坏喷头，Z轴即将上下运动？</source>
        <translation>Make sure that nothing lies under the heads, or they will be damaged. Z will move up and down. Go on?</translation>
    </message>
    <message>
        <source>Z 轴运动中，请注意观察</source>
        <translation>Z is moving, please watch</translation>
    </message>
    <message>
        <source>喷头下方是否放置容器，即将开始挤蜡？</source>
        <translation>Is a container under the heads? Purging starts now</translation>
    </message>
    <message>
        <source>是否取消挤蜡？</source>
        <translation>Cancel the purge?</translation>
    </message>
    <message>
        <source>请稍后，挤蜡即将完成</source>
        <translation>Please wait, the purge is ending</translation>
    </message>
    <message>
        <source>挤蜡完成</source>
        <translation>Purge finished</translation>
    </message>
    <message>
        <source>打印时不能读写归一化值</source>
        <translation>Norm values cannot be read or written while printing</translation>
    </message>
    <message>
        <source>归一化值读写失败(%1)，请查看日志</source>
        <translation>Reading or writing the norm values failed (%1), please look into the log</translation>
    </message>
    <message>
        <source>归一化值读写完成</source>
        <translation>Norm values are read and written</translation>
    </message>
    <message>
        <source>将喷头%1 %2的归一化值加上偏移量，存为修改值？</source>
        <translation>Add the offset to the norm values of head %1 %2 and keep them as edited values?</translation>
    </message>
    <message>
        <source>将原始归一化值写入喷头%1 %2？</source>
        <translation>Write the original norm values to head %1 %2?</translation>
    </message>
    <message>
        <source>将修改后的归一化值写入喷头%1 %2？</source>
        <translation>Write the edited norm values to head %1 %2?</translation>
    </message>
</context>
<context>
    <name>EmailForm</name>
    <message>
        <source>电子邮箱通知</source>
        <translation>E-mail notices</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>邮件服务器</source>
        <translation>Mail server</translation>
    </message>
    <message>
        <source>发件人</source>
        <translation>Sender</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>使用SSL/TLS加密</source>
        <translation>Use SSL/TLS encryption</translation>
    </message>
    <message>
        <source>收件人</source>
        <translation>Recipients</translation>
    </message>
    <message>
        <source>蜡材容量</source>
        <translation>Wax amount</translation>
    </message>
    <message>
        <source>打印开始/停止</source>
        <translation>Print start/stop</translation>
    </message>
    <message>
        <source>设备异常</source>
        <translation>Machine faults</translation>
    </message>
    <message>
        <source>设备维护</source>
        <translation>Maintenance</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>正在发送测试邮件，请稍候</source>
        <translation>Sending a test mail, please wait</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Saved</translation>
    </message>
</context>
<context>
    <name>EventHandler</name>
    <message>
        <source>该事件未发生</source>
        <translation>This event has not occurred</translation>
    </message>
    <message>
        <source>首次发生时间: </source>
        <translation>First time: </translation>
    </message>
    <message>
        <source>发生次数: %1</source>
        <translation>Count: %1</translation>
    </message>
    <message>
        <source>事件: %1</source>
        <translation>Event: %1</translation>
    </message>
    <message>
        <source> (当前值%1&gt;设定值%2) </source>
        <translation> (value %1 &gt; set-point %2) </translation>
    </message>
    <message>
        <source> (当前值%1&lt;设定值%2) </source>
        <translation> (value %1 &lt; set-point %2) </translation>
    </message>
    <message>
        <source>success</source>
        <translation>success</translation>
    </message>
    <message>
        <source>喷头%1液位异常，请断电重启</source>
        <translation>Ink level of head %1 abnormal, please switch off and on again</translation>
    </message>
    <message>
        <source>CAN 异常-%1 </source>
        <translation>CAN fault - %1 </translation>
    </message>
    <message>
        <source>更新第%1个墨瓶</source>
        <translation>Bottle %1 replaced</translation>
    </message>
    <message>
        <source>墨瓶%1放错位置</source>
        <translation>Bottle %1 is in the wrong place</translation>
    </message>
    <message>
        <source>卡片读取失败%1</source>
        <translation>Card %1 could not be read</translation>
    </message>
    <message>
        <source>卡片写入失败%1</source>
        <translation>Card %1 could not be written</translation>
    </message>
    <message>
        <source>整平棍异常 当前转速%1</source>
        <translation>Leveller roller fault, present speed %1</translation>
    </message>
    <message>
        <source>请关闭墨箱门，否则无法供墨</source>
        <translation>Please close the ink box door, no wax can be fed otherwise</translation>
    </message>
    <message>
        <source>墨栈光电状态异常</source>
        <translation>Ink stack photo sensor abnormal</translation>
    </message>
    <message>
        <source>气压恢复中(%1,%2,%3)</source>
        <translation>Air pressure is recovering (%1,%2,%3)</translation>
    </message>
    <message>
        <source>此模型(%1)不适用于当前机器(%2),是否继续打印</source>
        <translation>This model (%1) does not suit this machine (%2). Print all the same?</translation>
    </message>
    <message>
        <source>请稍后，加热中(保温-&gt;打印)</source>
        <translation>Please wait, heating (keep-warm -&gt; printing)</translation>
    </message>
    <message>
        <source>整平棍转速异常</source>
        <translation>Leveller roller speed abnormal</translation>
    </message>
    <message>
        <source>停止打印</source>
        <translation>Printing stopped</translation>
    </message>
    <message>
        <source>打印超时</source>
        <translation>Printing timed out</translation>
    </message>
    <message>
        <source>COM%1串口打开失败，请重启</source>
        <translation>Serial port COM%1 could not be opened, please restart</translation>
    </message>
    <message>
        <source>配置文件丢失</source>
        <translation>Configuration file lost</translation>
    </message>
    <message>
        <source>打印完成</source>
        <translation>Printing finished</translation>
    </message>
    <message>
        <source>打印失败</source>
        <translation>Printing failed</translation>
    </message>
    <message>
        <source>结构墨瓶空</source>
        <translation>Structure bottle empty</translation>
    </message>
    <message>
        <source>支撑墨瓶空</source>
        <translation>Support bottle empty</translation>
    </message>
    <message>
        <source>未检测到升级文件</source>
        <translation>No update file found</translation>
    </message>
    <message>
        <source>X 轴停止运动超时</source>
        <translation>X axis did not stop in time</translation>
    </message>
    <message>
        <source>Y 轴停止运动超时</source>
        <translation>Y axis did not stop in time</translation>
    </message>
    <message>
        <source>Z 轴停止运动超时</source>
        <translation>Z axis did not stop in time</translation>
    </message>
    <message>
        <source>支撑墨管温度1</source>
        <translation>Support tube temp. 1</translation>
    </message>
    <message>
        <source>支撑墨管温度2</source>
        <translation>Support tube temp. 2</translation>
    </message>
    <message>
        <source>支撑墨管温度3</source>
        <translation>Support tube temp. 3</translation>
    </message>
    <message>
        <source>结构墨管温度1</source>
        <translation>Structure tube temp. 1</translation>
    </message>
    <message>
        <source>结构墨管温度2</source>
        <translation>Structure tube temp. 2</translation>
    </message>
    <message>
        <source>结构墨管温度3</source>
        <translation>Structure tube temp. 3</translation>
    </message>
    <message>
        <source>结构阀岛温度1</source>
        <translation>Structure valve island temp. 1</translation>
    </message>
    <message>
        <source>结构阀岛温度2</source>
        <translation>Structure valve island temp. 2</translation>
    </message>
    <message>
        <source>结构料桶温度1</source>
        <translation>Structure tank temp. 1</translation>
    </message>
    <message>
        <source>结构料桶温度2</source>
        <translation>Structure tank temp. 2</translation>
    </message>
    <message>
        <source>结构墨管输出控制阀温度</source>
        <translation>Structure outlet valve temp.</translation>
    </message>
    <message>
        <source>支撑阀岛温度1</source>
        <translation>Support valve island temp. 1</translation>
    </message>
    <message>
        <source>支撑阀岛温度2</source>
        <translation>Support valve island temp. 2</translation>
    </message>
    <message>
        <source>支撑料桶温度1</source>
        <translation>Support tank temp. 1</translation>
    </message>
    <message>
        <source>支撑料桶温度2</source>
        <translation>Support tank temp. 2</translation>
    </message>
    <message>
        <source>支撑墨管输出控制阀温度</source>
        <translation>Support outlet valve temp.</translation>
    </message>
    <message>
        <source>喷头黄铜温度1</source>
        <translation>Head brass temp. 1</translation>
    </message>
    <message>
        <source>喷头黄铜温度2</source>
        <translation>Head brass temp. 2</translation>
    </message>
    <message>
        <source>喷头黄铜温度3</source>
        <translation>Head brass temp. 3</translation>
    </message>
    <message>
        <source>整平辊温度</source>
        <translation>Leveller roller temp.</translation>
    </message>
    <message>
        <source>整平刮刀温度</source>
        <translation>Leveller blade temp.</translation>
    </message>
    <message>
        <source>整平腔废墨出口温度</source>
        <translation>Leveller waste outlet temp.</translation>
    </message>
    <message>
        <source>废墨管温度</source>
        <translation>Waste tube temp.</translation>
    </message>
    <message>
        <source>喷头温度1</source>
        <translation>Head temp. 1</translation>
    </message>
    <message>
        <source>喷头温度2</source>
        <translation>Head temp. 2</translation>
    </message>
    <message>
        <source>喷头温度3</source>
        <translation>Head temp. 3</translation>
    </message>
    <message>
        <source>结构阀岛供墨失败</source>
        <translation>Structure valve island feed failed</translation>
    </message>
    <message>
        <source>支撑阀岛供墨失败</source>
        <translation>Support valve island feed failed</translation>
    </message>
    <message>
        <source>喷头供墨异常</source>
        <translation>Head ink supply abnormal</translation>
    </message>
    <message>
        <source>日常维护项目已过期,请打开维护页面查询!</source>
        <translation>A maintenance item is overdue, please open the maintenance page!</translation>
    </message>
</context>
<context>
    <name>FileForm</name>
    <message>
        <source>打印队列</source>
        <translation>Print queue</translation>
    </message>
    <message>
        <source>等待打印</source>
        <translation>Waiting</translation>
    </message>
    <message>
        <source>已完成</source>
        <translation>Finished</translation>
    </message>
    <message>
        <source>已中止</source>
        <translation>Aborted</translation>
    </message>
    <message>
        <source>重打</source>
        <translation>Reprint</translation>
    </message>
    <message>
        <source>U盘添加</source>
        <translation>From USB</translation>
    </message>
    <message>
        <source>文件拷贝中</source>
        <translation>Copying file</translation>
    </message>
    <message>
        <source>从 %1 到 %2</source>
        <translation>From %1 to %2</translation>
    </message>
</context>
<context>
    <name>FirmwareUpdate</name>
    <message>
        <source>准备升级，请稍后</source>
        <translation>Preparing the update, please wait</translation>
    </message>
    <message>
        <source>模式切换错误，升级失败(%1!=%2)</source>
        <translation>Mode switch error, update failed (%1!=%2)</translation>
    </message>
    <message>
        <source>升级模式切换错误，升级失败,请断电重启(%1 != %2)</source>
        <translation>Update mode switch error, update failed, please switch off and on again (%1 != %2)</translation>
    </message>
    <message>
        <source>数据发送错误，升级失败重启后将重新升级</source>
        <translation>Data send error, update failed; it runs again after a restart</translation>
    </message>
    <message>
        <source>%1#电路板升级中</source>
        <translation>Updating board %1</translation>
    </message>
    <message>
        <source>所有电路升级完成,请断电重启</source>
        <translation>All boards are updated, please switch off and on again</translation>
    </message>
</context>
<context>
    <name>HomeForm</name>
    <message>
        <source>预热中... ...</source>
        <translation>Preheating ...</translation>
    </message>
    <message>
        <source>进       度</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Please choose a print file</translation>
    </message>
    <message>
        <source>剩余时间</source>
        <translation>Time left</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Structure wax</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Support wax</translation>
    </message>
    <message>
        <source>开始打印时间</source>
        <translation>Print start</translation>
    </message>
    <message>
        <source>预计完成时间</source>
        <translation>Expected end</translation>
    </message>
    <message>
        <source>中止</source>
        <translation>Abort</translation>
    </message>
    <message>
        <source>前门</source>
        <translation>Front door</translation>
    </message>
    <message>
        <source>请移动到 非系统磁盘</source>
        <translation>Please move the program to a disk that is not the system disk</translation>
    </message>
    <message>
        <source>磁盘空间不足，总共: %1GB,已用: %2 GB 请及时清理模型</source>
        <translation>Disk space is short. Total: %1 GB, used: %2 GB. Please clear out models soon</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>继续</source>
        <translation>Resume</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>Start printing</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>The platform is not in place</translation>
    </message>
    <message>
        <source>平台是否为空?</source>
        <translation>Is the platform empty?</translation>
    </message>
    <message>
        <source>清空废料箱</source>
        <translation>Empty the waste box</translation>
    </message>
    <message>
        <source>是否中止打印</source>
        <translation>Abort the print?</translation>
    </message>
    <message>
        <source>打印中... ...</source>
        <translation>Printing ...</translation>
    </message>
    <message>
        <source>保温中... ...</source>
        <translation>Keeping warm ...</translation>
    </message>
    <message>
        <source>模型文件损坏</source>
        <translation>The model file is damaged</translation>
    </message>
</context>
<context>
    <name>JobNeeds</name>
    <message>
        <source>等待任务需要</source>
        <translation>Needed by waiting jobs</translation>
    </message>
    <message>
        <source>缺 %1 g</source>
        <translation>%1 g short</translation>
    </message>
    <message>
        <source>%1 个未知</source>
        <translation>%1 unknown</translation>
    </message>
    <message>
        <source>够</source>
        <translation>enough</translation>
    </message>
</context>
<context>
    <name>LayerPicture</name>
    <message>
        <source>第 %1 层</source>
        <translation>Layer %1</translation>
    </message>
</context>
<context>
    <name>MachineForm</name>
    <message>
        <source>打印机信息</source>
        <translation>Printer information</translation>
    </message>
    <message>
        <source>打印机型号</source>
        <translation>Printer model</translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation>Firmware version</translation>
    </message>
    <message>
        <source>固件更新时间</source>
        <translation>Firmware update time</translation>
    </message>
    <message>
        <source>设备序列号</source>
        <translation>Machine serial number</translation>
    </message>
    <message>
        <source>MAC地址</source>
        <translation>MAC address</translation>
    </message>
    <message>
        <source>Hib版本</source>
        <translation>Hib version</translation>
    </message>
    <message>
        <source>切片版本</source>
        <translation>Slicer version</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>产品型号：</source>
        <translation>Product model: </translation>
    </message>
    <message>
        <source>主页</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>队列</source>
        <translation>Queue</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>Material</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Tools</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Setup</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>供墨</source>
        <translation>Ink feeding</translation>
    </message>
</context>
<context>
    <name>MaintainForm</name>
    <message>
        <source>操作人员维护</source>
        <translation>Operator maintenance</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>清洁顶部风扇过滤棉</source>
        <translation>Clean the top fan filter</translation>
    </message>
    <message>
        <source>清洁初效过滤器</source>
        <translation>Clean the primary filter</translation>
    </message>
    <message>
        <source>清洁外表面</source>
        <translation>Clean the outer surfaces</translation>
    </message>
    <message>
        <source>清洁喷车底板非喷头安装区域</source>
        <translation>Clean the carriage base outside the head mounts</translation>
    </message>
    <message>
        <source>清洁Y梁底面</source>
        <translation>Clean the underside of the Y beam</translation>
    </message>
    <message>
        <source>滚筒吸粉管道除粉</source>
        <translation>Clear powder from the roller suction pipe</translation>
    </message>
    <message>
        <source>清洁墨站刮刀</source>
        <translation>Clean the ink station scraper</translation>
    </message>
    <message>
        <source>清洁整平棍及整平棍刮刀表面</source>
        <translation>Clean the leveller roller and its scraper</translation>
    </message>
    <message>
        <source>更换初效过滤器</source>
        <translation>Replace the primary filter</translation>
    </message>
    <message>
        <source>X轴导轨上油</source>
        <translation>Oil the X rail</translation>
    </message>
    <message>
        <source>Y轴导轨和电机丝杆上油</source>
        <translation>Oil the Y rail and motor screw</translation>
    </message>
    <message>
        <source>Z轴导轨和电机丝杆上油</source>
        <translation>Oil the Z rail and motor screw</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>到期</source>
        <translation>Due</translation>
    </message>
    <message>
        <source>超期</source>
        <translation>Overdue</translation>
    </message>
    <message>
        <source>维护项目</source>
        <translation>Maintenance item</translation>
    </message>
    <message>
        <source>剩余</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>当前维护循环</source>
        <translation>of this cycle</translation>
    </message>
    <message>
        <source>维护是否完成?</source>
        <translation>Is the maintenance done?</translation>
    </message>
</context>
<context>
    <name>MaterialForm</name>
    <message>
        <source>材料</source>
        <translation>Material</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Support wax</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Structure wax</translation>
    </message>
    <message>
        <source>墨瓶 1</source>
        <translation>Bottle 1</translation>
    </message>
    <message>
        <source>墨瓶 2</source>
        <translation>Bottle 2</translation>
    </message>
    <message>
        <source>墨瓶 3</source>
        <translation>Bottle 3</translation>
    </message>
    <message>
        <source>墨瓶 4</source>
        <translation>Bottle 4</translation>
    </message>
    <message>
        <source>触摸墨瓶查看详情</source>
        <translation>Touch a bottle for its details</translation>
    </message>
    <message>
        <source>缺失</source>
        <translation>Missing</translation>
    </message>
    <message>
        <source>使用中</source>
        <translation>In use</translation>
    </message>
    <message>
        <source>已安装</source>
        <translation>Installed</translation>
    </message>
    <message>
        <source>未安装</source>
        <translation>Not installed</translation>
    </message>
    <message>
        <source>剩余重量</source>
        <translation>Rest weight</translation>
    </message>
    <message>
        <source>剩余比例</source>
        <translation>Rest in percent</translation>
    </message>
    <message>
        <source>批号</source>
        <translation>Batch</translation>
    </message>
    <message>
        <source>过期日期</source>
        <translation>Expiry date</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>材料状态</source>
        <translation>Material state</translation>
    </message>
    <message>
        <source>激活</source>
        <translation>Activate</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>MsgForm</name>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Error</translation>
    </message>
</context>
<context>
    <name>NetForm</name>
    <message>
        <source>网络配置</source>
        <translation>Network setup</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Setup</translation>
    </message>
    <message>
        <source>自动获取地址 (DHCP)</source>
        <translation>Obtain the address automatically (DHCP)</translation>
    </message>
    <message>
        <source>IP地址</source>
        <translation>IP address</translation>
    </message>
    <message>
        <source>子网掩码</source>
        <translation>Subnet mask</translation>
    </message>
    <message>
        <source>默认网关</source>
        <translation>Default gateway</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>IP地址无效，请检查</source>
        <translation>The IP address is not valid, please check it</translation>
    </message>
    <message>
        <source>子网掩码无效，请检查</source>
        <translation>The subnet mask is not valid, please check it</translation>
    </message>
    <message>
        <source>默认网关无效或与IP地址不在同一网段，请检查</source>
        <translation>The default gateway is not valid or not in the subnet of the IP address, please check it</translation>
    </message>
    <message>
        <source>网卡未正常工作请检查网线是否正常连接，人工排查问题</source>
        <translation>The network adapter is not working. Please check that the cable is connected and look into the problem by hand</translation>
    </message>
    <message>
        <source>配置已取消</source>
        <translation>Setup cancelled</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Saved</translation>
    </message>
</context>
<context>
    <name>PrintInfoForm</name>
    <message>
        <source>模型详情</source>
        <translation>Model details</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Please choose a print file</translation>
    </message>
    <message>
        <source>模型名称</source>
        <translation>Model name</translation>
    </message>
    <message>
        <source>打印时间</source>
        <translation>Print time</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Structure wax</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Support wax</translation>
    </message>
    <message>
        <source>打印机模式</source>
        <translation>Printer mode</translation>
    </message>
    <message>
        <source>估算层数</source>
        <translation>Estimated layers</translation>
    </message>
    <message>
        <source>体积</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>Start printing</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除</source>
        <translation>The model file is damaged or deleted</translation>
    </message>
    <message>
        <source>没有预览图</source>
        <translation>No preview</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除，请重新添加</source>
        <translation>The model file is damaged or deleted, please add it again</translation>
    </message>
</context>
<context>
    <name>PrintService</name>
    <message>
        <source> 切片中请稍后 %1.%2..(%3)</source>
        <translation> Slicing, please wait %1.%2..(%3)</translation>
    </message>
    <message>
        <source>打印开始</source>
        <translation>Print started</translation>
    </message>
</context>
<context>
    <name>SetupForm</name>
    <message>
        <source>设置</source>
        <translation>Setup</translation>
    </message>
    <message>
        <source>网络</source>
        <translation>Network</translation>
    </message>
    <message>
        <source>电子邮箱</source>
        <translation>E-mail</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>中文</source>
        <translation>Chinese</translation>
    </message>
    <message>
        <source>英语</source>
        <translation>English</translation>
    </message>
    <message>
        <source>土耳其语</source>
        <translation>Turkish</translation>
    </message>
    <message>
        <source>法语</source>
        <translation>French</translation>
    </message>
    <message>
        <source>韩语</source>
        <translation>Korean</translation>
    </message>
    <message>
        <source>资源文件拷贝失败</source>
        <translation>Copying the resource file failed</translation>
    </message>
    <message>
        <source>即将重启?</source>
        <translation>Restart now?</translation>
    </message>
</context>
<context>
    <name>StartCheck</name>
    <message>
        <source>更新完成请核对一下版本号，当前版本为</source>
        <translation>Update complete, please check the version number. The present version is</translation>
    </message>
    <message>
        <source>请确保切片软件版本大于V1.3.2</source>
        <translation>Please make sure that the slicer version is above V1.3.2</translation>
    </message>
</context>
<context>
    <name>ToolForm</name>
    <message>
        <source>工具</source>
        <translation>Tools</translation>
    </message>
    <message>
        <source>打印机信息</source>
        <translation>Printer information</translation>
    </message>
    <message>
        <source>客户使用情况</source>
        <translation>Usage</translation>
    </message>
    <message>
        <source>诊断</source>
        <translation>Diagnosis</translation>
    </message>
    <message>
        <source>操作人员维护</source>
        <translation>Operator maintenance</translation>
    </message>
    <message>
        <source>保存日志</source>
        <translation>Save logs</translation>
    </message>
    <message>
        <source>U盘更新</source>
        <translation>Update from USB</translation>
    </message>
    <message>
        <source>电源选项</source>
        <translation>Power options</translation>
    </message>
    <message>
        <source>曲线</source>
        <translation>Trends</translation>
    </message>
    <message>
        <source>插入U盘后可以保存日志和更新</source>
        <translation>Insert a USB disk to save logs or update</translation>
    </message>
    <message>
        <source>日志没有全部保存</source>
        <translation>Not all logs could be saved</translation>
    </message>
    <message>
        <source>已保存 %1 个日志文件</source>
        <translation>%1 log files saved</translation>
    </message>
    <message>
        <source>是否立即重启完成升级?</source>
        <translation>Restart now to finish the update?</translation>
    </message>
    <message>
        <source>是否关机，请确认，如果进入关机流程，只能断电重启</source>
        <translation>Shut down? Please confirm: once the shutdown has begun, the machine starts again only after the mains are switched off and on</translation>
    </message>
    <message>
        <source>请关闭电源</source>
        <translation>Please switch off the mains</translation>
    </message>
    <message>
        <source>关机中,请稍后...</source>
        <translation>Shutting down, please wait...</translation>
    </message>
</context>
<context>
    <name>TrendForm</name>
    <message>
        <source>曲线</source>
        <translation>Trends</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>墨管</source>
        <translation>Tubes</translation>
    </message>
    <message>
        <source>结构</source>
        <translation>Structure</translation>
    </message>
    <message>
        <source>支撑</source>
        <translation>Support</translation>
    </message>
    <message>
        <source>喷头</source>
        <translation>Heads</translation>
    </message>
    <message>
        <source>整平</source>
        <translation>Leveller</translation>
    </message>
    <message>
        <source>气压</source>
        <translation>Air</translation>
    </message>
    <message>
        <source>液位</source>
        <translation>Levels</translation>
    </message>
    <message>
        <source>结构负压%1</source>
        <translation>Structure %1</translation>
    </message>
    <message>
        <source>支撑负压%1</source>
        <translation>Support %1</translation>
    </message>
    <message>
        <source>正压</source>
        <translation>Positive</translation>
    </message>
    <message>
        <source>喷头%1支撑液位</source>
        <translation>Head %1 support level</translation>
    </message>
    <message>
        <source>喷头%1结构液位</source>
        <translation>Head %1 structure level</translation>
    </message>
    <message>
        <source>触摸曲线查看该时刻的数值和事件</source>
        <translation>Touch the curves for the values and events of that time</translation>
    </message>
</context>
<context>
    <name>TrendPlot</name>
    <message>
        <source>没有数据</source>
        <translation>No data</translation>
    </message>
</context>
<context>
    <name>UserInfoForm</name>
    <message>
        <source>客户使用情况</source>
        <translation>Usage</translation>
    </message>
    <message>
        <source>打印机总时间</source>
        <translation>Printer total time</translation>
    </message>
    <message>
        <source>打印总时间</source>
        <translation>Total print time</translation>
    </message>
    <message>
        <source>连续运行时间</source>
        <translation>Continuous run time</translation>
    </message>
    <message>
        <source>使用总结构材料</source>
        <translation>Structure wax used</translation>
    </message>
    <message>
        <source>使用总支撑材料</source>
        <translation>Support wax used</translation>
    </message>
    <message>
        <source>图层已打印</source>
        <translation>Layers printed</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
</context>
<context>
    <name>WarningForm</name>
    <message>
        <source>警告</source>
        <translation>Warnings</translation>
    </message>
    <message>
        <source>当前没有警告</source>
        <translation>There are no warnings</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>错误代码</source>
        <translation>Error code</translation>
    </message>
    <message>
        <source>事件内容</source>
        <translation>Event</translation>
    </message>
</context>
</TS>
