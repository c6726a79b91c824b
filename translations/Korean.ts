<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR" sourcelanguage="zh_CN">
<context>
    <name>AddFileForm</name>
    <message>
        <source>添加文件</source>
        <translation>파일 추가</translation>
    </message>
    <message>
        <source>点选要添加到打印队列的文件</source>
        <translation>출력 대기열에 추가할 파일을 누르십시오</translation>
    </message>
    <message>
        <source>U盘中没有模型文件</source>
        <translation>USB 메모리에 모델 파일이 없습니다</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>추가</translation>
    </message>
    <message>
        <source>正在使用，未添加</source>
        <translation>사용 중이므로 추가하지 않았습니다</translation>
    </message>
    <message>
        <source>文件名无效，未添加</source>
        <translation>파일 이름이 올바르지 않아 추가하지 않았습니다</translation>
    </message>
    <message>
        <source>复制失败，请检查U盘和磁盘空间</source>
        <translation>복사하지 못했습니다. USB 메모리와 디스크 공간을 확인하십시오</translation>
    </message>
    <message>
        <source>文件损坏，无法打印</source>
        <translation>파일이 손상되어 출력할 수 없습니다</translation>
    </message>
    <message>
        <source>%1个文件已添加，%2个有问题：</source>
        <translation>파일 %1개를 추가했으며 %2개에 문제가 있습니다:</translation>
    </message>
</context>
<context>
    <name>BackgroundService</name>
    <message>
        <source>设置喷头参数异常，请重启</source>
        <translation>헤드 파라미터를 설정하지 못했습니다. 다시 시작하십시오</translation>
    </message>
    <message>
        <source>检测到喷头异常(%1)，请尝试断电重启(检查 喷头控制板连接)</source>
        <translation>헤드 이상이 감지되었습니다(%1). 전원을 껐다가 다시 켜십시오(헤드 보드 연결을 확인하십시오)</translation>
    </message>
</context>
<context>
    <name>DebugForm</name>
    <message>
        <source>诊断</source>
        <translation>진단</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>拉墨站测试</source>
        <translation>잉크 스테이션 테스트</translation>
    </message>
    <message>
        <source>打点</source>
        <translation>도트 출력</translation>
    </message>
    <message>
        <source>Z轴测试</source>
        <translation>Z축 테스트</translation>
    </message>
    <message>
        <source>循环挤蜡</source>
        <translation>왁스 반복 퍼지</translation>
    </message>
    <message>
        <source>喷头归一化值</source>
        <translation>헤드 정규화 값</translation>
    </message>
    <message>
        <source>喷头</source>
        <translation>헤드</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>재료</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>서포트 왁스</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>구조 왁스</translation>
    </message>
    <message>
        <source>偏移量</source>
        <translation>오프셋</translation>
    </message>
    <message>
        <source>生成修改值</source>
        <translation>수정값 만들기</translation>
    </message>
    <message>
        <source>写入原始值</source>
        <translation>원본값 쓰기</translation>
    </message>
    <message>
        <source>写入修改值</source>
        <translation>수정값 쓰기</translation>
    </message>
    <message>
        <source>请稍后，准备中...</source>
        <translation>잠시 기다려 주십시오. 준비 중...</translation>
    </message>
    <message>
        <source>墨站是否正确放置，运动范围内是否清洁</source>
        <translation>잉크 스테이션이 올바르게 놓여 있고 동작 범위가 깨끗합니까?</translation>
    </message>
    <message>
        <source>X轴错误(%1)</source>
        <translation>X축 오류(%1)</translation>
    </message>
    <message>
        <source>关闭弹窗后完成测试</source>
        <translation>이 창을 닫으면 테스트가 종료됩니다</translation>
    </message>
    <message>
        <source>请稍后，测试即将完成</source>
        <translation>잠시 기다려 주십시오. 테스트를 곧 마칩니다</translation>
    </message>
    <message>
        <source>测试完成(%1)</source>
        <translation>테스트가 완료되었습니다(%1)</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>출력할 파일을 선택하십시오</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>플랫폼이 제자리에 있지 않습니다</translation>
    </message>
    <message>
        <source>是否运动测试？</source>
        <translation>동작 테스트를 실행하시겠습니까?</translation>
    </message>
    <message>
        <source>测试时注意人工观察是否异常，Z轴即将回零进行0~145000往复运动？</source>
        <translation>테스트 중 이상이 없는지 직접 관찰하십시오. Z축이 원점 복귀 후 0~145000 범위를 왕복합니다. 계속하시겠습니까?</translation>
    </message>
    <message>
        <source>请稍后，运动测试即将完成</source>
        <translation>잠시 기다려 주십시오. 동작 테스트를 곧 마칩니다</translation>
    </message>
    <message>
        <source>测试完成，请拷贝日志查看测试次数</source>
        <translation>테스트가 완료되었습니다. 로그를 복사하여 테스트 횟수를 확인하십시오</translation>
    </message>
    <message>
        <source>机器处于非空闲状态(打印/暂停)，无法进行此流程</source>
        <translation>장비가 대기 상태가 아닙니다(출력/일시 정지). 이 절차를 진행할 수 없습니다</translation>
    </message>
    <message>
        <source>请确认喷头下方没有异物，否则将损坏喷头，Z轴即将上下运动？</source>
        <translation>헤드 아래에 이물질이 없는지 확인하십시오. 헤드가 손상될 수 있습니다. Z축이 위아래로 움직입니다. 계속하시겠습니까?</translation>
    </message>
    <message>
        <source>Z 轴运动中，请注意观察</source>
        <translation>Z축이 움직이고 있습니다. 주의하여 관찰하십시오</translation>
    </message>
    <message>
        <source>喷头下方是否放置容器，即将开始挤蜡？</source>
        <translation>헤드 아래에 용기를 놓았습니까? 곧 왁스 퍼지를 시작합니다</translation>
    </message>
    <message>
        <source>是否取消挤蜡？</source>
        <translation>왁스 퍼지를 취소하시겠습니까?</translation>
    </message>
    <message>
        <source>请稍后，挤蜡即将完成</source>
        <translation>잠시 기다려 주십시오. 왁스 퍼지를 곧 마칩니다</translation>
    </message>
    <message>
        <source>挤蜡完成</source>
        <translation>왁스 퍼지가 완료되었습니다</translation>
    </message>
    <message>
        <source>打印时不能读写归一化值</source>
        <translation>출력 중에는 정규화 값을 읽거나 쓸 수 없습니다</translation>
    </message>
    <message>
        <source>归一化值读写失败(%1)，请查看日志</source>
        <translation>정규화 값을 읽거나 쓰지 못했습니다(%1). 로그를 확인하십시오</translation>
    </message>
    <message>
        <source>归一化值读写完成</source>
        <translation>정규화 값 읽기/쓰기가 완료되었습니다</translation>
    </message>
    <message>
        <source>将喷头%1 %2的归一化值加上偏移量，存为修改值？</source>
        <translation>헤드 %1 %2의 정규화 값에 오프셋을 더해 수정값으로 저장하시겠습니까?</translation>
    </message>
    <message>
        <source>将原始归一化值写入喷头%1 %2？</source>
        <translation>원본 정규화 값을 헤드 %1 %2에 쓰시겠습니까?</translation>
    </message>
    <message>
        <source>将修改后的归一化值写入喷头%1 %2？</source>
        <translation>수정된 정규화 값을 헤드 %1 %2에 쓰시겠습니까?</translation>
    </message>
</context>
<context>
    <name>EmailForm</name>
    <message>
        <source>电子邮箱通知</source>
        <translation>이메일 알림</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>邮件服务器</source>
        <translation>메일 서버</translation>
    </message>
    <message>
        <source>发件人</source>
        <translation>보내는 사람</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>비밀번호</translation>
    </message>
    <message>
        <source>使用SSL/TLS加密</source>
        <translation>SSL/TLS 암호화 사용</translation>
    </message>
    <message>
        <source>收件人</source>
        <translation>받는 사람</translation>
    </message>
    <message>
        <source>蜡材容量</source>
        <translation>왁스 용량</translation>
    </message>
    <message>
        <source>打印开始/停止</source>
        <translation>출력 시작/중지</translation>
    </message>
    <message>
        <source>设备异常</source>
        <translation>장비 이상</translation>
    </message>
    <message>
        <source>设备维护</source>
        <translation>장비 유지보수</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>초기화</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>적용</translation>
    </message>
    <message>
        <source>正在发送测试邮件，请稍候</source>
        <translation>테스트 메일을 보내고 있습니다. 잠시 기다려 주십시오</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>저장되었습니다</translation>
    </message>
</context>
<context>
    <name>EventHandler</name>
    <message>
        <source>该事件未发生</source>
        <translation>이 이벤트는 발생하지 않았습니다</translation>
    </message>
    <message>
        <source>首次发生时间: </source>
        <translation>최초 발생 시각: </translation>
    </message>
    <message>
        <source>发生次数: %1</source>
        <translation>발생 횟수: %1</translation>
    </message>
    <message>
        <source>事件: %1</source>
        <translation>이벤트: %1</translation>
    </message>
    <message>
        <source> (当前值%1&gt;设定值%2) </source>
        <translation> (현재값 %1 &gt; 설정값 %2) </translation>
    </message>
    <message>
        <source> (当前值%1&lt;设定值%2) </source>
        <translation> (현재값 %1 &lt; 설정값 %2) </translation>
    </message>
    <message>
        <source>success</source>
        <translation>성공</translation>
    </message>
    <message>
        <source>喷头%1液位异常，请断电重启</source>
        <translation>헤드 %1 잉크 레벨이 비정상입니다. 전원을 껐다가 다시 켜십시오</translation>
    </message>
    <message>
        <source>CAN 异常-%1 </source>
        <translation>CAN 이상 - %1 </translation>
    </message>
    <message>
        <source>更新第%1个墨瓶</source>
        <translation>보틀 %1 교체됨</translation>
    </message>
    <message>
        <source>墨瓶%1放错位置</source>
        <translation>보틀 %1의 위치가 잘못되었습니다</translation>
    </message>
    <message>
        <source>卡片读取失败%1</source>
        <translation>카드 %1 읽기에 실패했습니다</translation>
    </message>
    <message>
        <source>卡片写入失败%1</source>
        <translation>카드 %1 쓰기에 실패했습니다</translation>
    </message>
    <message>
        <source>整平棍异常 当前转速%1</source>
        <translation>레벨링 롤러 이상, 현재 회전 속도 %1</translation>
    </message>
    <message>
        <source>请关闭墨箱门，否则无法供墨</source>
        <translation>잉크 박스 도어를 닫으십시오. 닫지 않으면 왁스를 공급할 수 없습니다</translation>
    </message>
    <message>
        <source>墨栈光电状态异常</source>
        <translation>잉크 스테이션 광센서 상태가 비정상입니다</translation>
    </message>
    <message>
        <source>气压恢复中(%1,%2,%3)</source>
        <translation>공기압 복구 중(%1,%2,%3)</translation>
    </message>
    <message>
        <source>此模型(%1)不适用于当前机器(%2),是否继续打印</source>
        <translation>이 모델(%1)은 이 장비(%2)에 맞지 않습니다. 그래도 출력하시겠습니까?</translation>
    </message>
    <message>
        <source>请稍后，加热中(保温-&gt;打印)</source>
        <translation>잠시 기다려 주십시오. 가열 중(보온 -&gt; 출력)</translation>
    </message>
    <message>
        <source>整平棍转速异常</source>
        <translation>레벨링 롤러 회전 속도가 비정상입니다</translation>
    </message>
    <message>
        <source>停止打印</source>
        <translation>출력이 중지되었습니다</translation>
    </message>
    <message>
        <source>打印超时</source>
        <translation>출력 시간이 초과되었습니다</translation>
    </message>
    <message>
        <source>COM%1串口打开失败，请重启</source>
        <translation>직렬 포트 COM%1을(를) 열 수 없습니다. 다시 시작하십시오</translation>
    </message>
    <message>
        <source>配置文件丢失</source>
        <translation>구성 파일이 없습니다</translation>
    </message>
    <message>
        <source>打印完成</source>
        <translation>출력이 완료되었습니다</translation>
    </message>
    <message>
        <source>打印失败</source>
        <translation>출력에 실패했습니다</translation>
    </message>
    <message>
        <source>结构墨瓶空</source>
        <translation>구조 보틀이 비었습니다</translation>
    </message>
    <message>
        <source>支撑墨瓶空</source>
        <translation>서포트 보틀이 비었습니다</translation>
    </message>
    <message>
        <source>未检测到升级文件</source>
        <translation>업데이트 파일이 없습니다</translation>
    </message>
    <message>
        <source>X 轴停止运动超时</source>
        <translation>X축이 제시간에 정지하지 않았습니다</translation>
    </message>
    <message>
        <source>Y 轴停止运动超时</source>
        <translation>Y축이 제시간에 정지하지 않았습니다</translation>
    </message>
    <message>
        <source>Z 轴停止运动超时</source>
        <translation>Z축이 제시간에 정지하지 않았습니다</translation>
    </message>
    <message>
        <source>支撑墨管温度1</source>
        <translation>서포트 잉크 튜브 온도 1</translation>
    </message>
    <message>
        <source>支撑墨管温度2</source>
        <translation>서포트 잉크 튜브 온도 2</translation>
    </message>
    <message>
        <source>支撑墨管温度3</source>
        <translation>서포트 잉크 튜브 온도 3</translation>
    </message>
    <message>
        <source>结构墨管温度1</source>
        <translation>구조 잉크 튜브 온도 1</translation>
    </message>
    <message>
        <source>结构墨管温度2</source>
        <translation>구조 잉크 튜브 온도 2</translation>
    </message>
    <message>
        <source>结构墨管温度3</source>
        <translation>구조 잉크 튜브 온도 3</translation>
    </message>
    <message>
        <source>结构阀岛温度1</source>
        <translation>구조 밸브 아일랜드 온도 1</translation>
    </message>
    <message>
        <source>结构阀岛温度2</source>
        <translation>구조 밸브 아일랜드 온도 2</translation>
    </message>
    <message>
        <source>结构料桶温度1</source>
        <translation>구조 탱크 온도 1</translation>
    </message>
    <message>
        <source>结构料桶温度2</source>
        <translation>구조 탱크 온도 2</translation>
    </message>
    <message>
        <source>结构墨管输出控制阀温度</source>
        <translation>구조 튜브 출구 밸브 온도</translation>
    </message>
    <message>
        <source>支撑阀岛温度1</source>
        <translation>서포트 밸브 아일랜드 온도 1</translation>
    </message>
    <message>
        <source>支撑阀岛温度2</source>
        <translation>서포트 밸브 아일랜드 온도 2</translation>
    </message>
    <message>
        <source>支撑料桶温度1</source>
        <translation>서포트 탱크 온도 1</translation>
    </message>
    <message>
        <source>支撑料桶温度2</source>
        <translation>서포트 탱크 온도 2</translation>
    </message>
    <message>
        <source>支撑墨管输出控制阀温度</source>
        <translation>서포트 튜브 출구 밸브 온도</translation>
    </message>
    <message>
        <source>喷头黄铜温度1</source>
        <translation>헤드 황동부 온도 1</translation>
    </message>
    <message>
        <source>喷头黄铜温度2</source>
        <translation>헤드 황동부 온도 2</translation>
    </message>
    <message>
        <source>喷头黄铜温度3</source>
        <translation>헤드 황동부 온도 3</translation>
    </message>
    <message>
        <source>整平辊温度</source>
        <translation>레벨링 롤러 온도</translation>
    </message>
    <message>
        <source>整平刮刀温度</source>
        <translation>레벨링 블레이드 온도</translation>
    </message>
    <message>
        <source>整平腔废墨出口温度</source>
        <translation>레벨링 챔버 폐잉크 출구 온도</translation>
    </message>
    <message>
        <source>废墨管温度</source>
        <translation>폐잉크 튜브 온도</translation>
    </message>
    <message>
        <source>喷头温度1</source>
        <translation>헤드 온도 1</translation>
    </message>
    <message>
        <source>喷头温度2</source>
        <translation>헤드 온도 2</translation>
    </message>
    <message>
        <source>喷头温度3</source>
        <translation>헤드 온도 3</translation>
    </message>
    <message>
        <source>结构阀岛供墨失败</source>
        <translation>구조 밸브 아일랜드 공급에 실패했습니다</translation>
    </message>
    <message>
        <source>支撑阀岛供墨失败</source>
        <translation>서포트 밸브 아일랜드 공급에 실패했습니다</translation>
    </message>
    <message>
        <source>喷头供墨异常</source>
        <translation>헤드 잉크 공급이 비정상입니다</translation>
    </message>
    <message>
        <source>日常维护项目已过期,请打开维护页面查询!</source>
        <translation>정기 유지보수 항목의 기한이 지났습니다. 유지보수 페이지를 여십시오!</translation>
    </message>
</context>
<context>
    <name>FileForm</name>
    <message>
        <source>打印队列</source>
        <translation>출력 대기열</translation>
    </message>
    <message>
        <source>等待打印</source>
        <translation>대기 중</translation>
    </message>
    <message>
        <source>已完成</source>
        <translation>완료됨</translation>
    </message>
    <message>
        <source>已中止</source>
        <translation>중단됨</translation>
    </message>
    <message>
        <source>重打</source>
        <translation>다시 출력</translation>
    </message>
    <message>
        <source>U盘添加</source>
        <translation>USB에서 추가</translation>
    </message>
    <message>
        <source>文件拷贝中</source>
        <translation>파일 복사 중</translation>
    </message>
    <message>
        <source>从 %1 到 %2</source>
        <translation>%1에서 %2(으)로</translation>
    </message>
</context>
<context>
    <name>FirmwareUpdate</name>
    <message>
        <source>准备升级，请稍后</source>
        <translation>업데이트를 준비하고 있습니다. 잠시 기다려 주십시오</translation>
    </message>
    <message>
        <source>模式切换错误，升级失败(%1!=%2)</source>
        <translation>모드 전환 오류로 업데이트에 실패했습니다(%1!=%2)</translation>
    </message>
    <message>
        <source>升级模式切换错误，升级失败,请断电重启(%1 != %2)</source>
        <translation>업데이트 모드 전환 오류로 업데이트에 실패했습니다. 전원을 껐다가 다시 켜십시오(%1 != %2)</translation>
    </message>
    <message>
        <source>数据发送错误，升级失败重启后将重新升级</source>
        <translation>데이터 전송 오류로 업데이트에 실패했습니다. 다시 시작한 뒤 업데이트를 다시 진행합니다</translation>
    </message>
    <message>
        <source>%1#电路板升级中</source>
        <translation>%1번 보드 업데이트 중</translation>
    </message>
    <message>
        <source>所有电路升级完成,请断电重启</source>
        <translation>모든 보드의 업데이트가 완료되었습니다. 전원을 껐다가 다시 켜십시오</translation>
    </message>
</context>
<context>
    <name>HomeForm</name>
    <message>
        <source>预热中... ...</source>
        <translation>예열 중 ...</translation>
    </message>
    <message>
        <source>进       度</source>
        <translation>진행률</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>출력할 파일을 선택하십시오</translation>
    </message>
    <message>
        <source>剩余时间</source>
        <translation>남은 시간</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>구조 왁스</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>서포트 왁스</translation>
    </message>
    <message>
        <source>开始打印时间</source>
        <translation>출력 시작</translation>
    </message>
    <message>
        <source>预计完成时间</source>
        <translation>완료 예정</translation>
    </message>
    <message>
        <source>中止</source>
        <translation>중단</translation>
    </message>
    <message>
        <source>前门</source>
        <translation>앞문</translation>
    </message>
    <message>
        <source>请移动到 非系统磁盘</source>
        <translation>프로그램을 시스템 디스크가 아닌 디스크로 옮기십시오</translation>
    </message>
    <message>
        <source>磁盘空间不足，总共: %1GB,已用: %2 GB 请及时清理模型</source>
        <translation>디스크 공간이 부족합니다. 전체: %1 GB, 사용: %2 GB. 모델을 빨리 정리하십시오</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>일시 정지</translation>
    </message>
    <message>
        <source>继续</source>
        <translation>계속</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>출력 시작</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>플랫폼이 제자리에 있지 않습니다</translation>
    </message>
    <message>
        <source>平台是否为空?</source>
        <translation>플랫폼이 비어 있습니까?</translation>
    </message>
    <message>
        <source>清空废料箱</source>
        <translation>폐기물 통을 비우십시오</translation>
    </message>
    <message>
        <source>是否中止打印</source>
        <translation>출력을 중단하시겠습니까?</translation>
    </message>
    <message>
        <source>打印中... ...</source>
        <translation>출력 중 ...</translation>
    </message>
    <message>
        <source>保温中... ...</source>
        <translation>보온 중 ...</translation>
    </message>
    <message>
        <source>模型文件损坏</source>
        <translation>모델 파일이 손상되었습니다</translation>
    </message>
</context>
<context>
    <name>JobNeeds</name>
    <message>
        <source>等待任务需要</source>
        <translation>대기 작업 필요량</translation>
    </message>
    <message>
        <source>缺 %1 g</source>
        <translation>%1 g 부족</translation>
    </message>
    <message>
        <source>%1 个未知</source>
        <translation>알 수 없음 %1개</translation>
    </message>
    <message>
        <source>够</source>
        <translation>충분</translation>
    </message>
</context>
<context>
    <name>LayerPicture</name>
    <message>
        <source>第 %1 层</source>
        <translation>레이어 %1</translation>
    </message>
</context>
<context>
    <name>MachineForm</name>
    <message>
        <source>打印机信息</source>
        <translation>프린터 정보</translation>
    </message>
    <message>
        <source>打印机型号</source>
        <translation>프린터 모델</translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation>펌웨어 버전</translation>
    </message>
    <message>
        <source>固件更新时间</source>
        <translation>펌웨어 업데이트 시각</translation>
    </message>
    <message>
        <source>设备序列号</source>
        <translation>장비 일련번호</translation>
    </message>
    <message>
        <source>MAC地址</source>
        <translation>MAC 주소</translation>
    </message>
    <message>
        <source>Hib版本</source>
        <translation>Hib 버전</translation>
    </message>
    <message>
        <source>切片版本</source>
        <translation>슬라이서 버전</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>产品型号：</source>
        <translation>제품 모델: </translation>
    </message>
    <message>
        <source>主页</source>
        <translation>홈</translation>
    </message>
    <message>
        <source>队列</source>
        <translation>대기열</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>재료</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>도구</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>설정</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>온도</translation>
    </message>
    <message>
        <source>供墨</source>
        <translation>잉크 공급</translation>
    </message>
</context>
<context>
    <name>MaintainForm</name>
    <message>
        <source>操作人员维护</source>
        <translation>작업자 유지보수</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>清洁顶部风扇过滤棉</source>
        <translation>상부 팬 필터 청소</translation>
    </message>
    <message>
        <source>清洁初效过滤器</source>
        <translation>프리필터 청소</translation>
    </message>
    <message>
        <source>清洁外表面</source>
        <translation>외부 표면 청소</translation>
    </message>
    <message>
        <source>清洁喷车底板非喷头安装区域</source>
        <translation>헤드 장착부를 제외한 캐리지 바닥판 청소</translation>
    </message>
    <message>
        <source>清洁Y梁底面</source>
        <translation>Y빔 밑면 청소</translation>
    </message>
    <message>
        <source>滚筒吸粉管道除粉</source>
        <translation>롤러 흡입관 분말 제거</translation>
    </message>
    <message>
        <source>清洁墨站刮刀</source>
        <translation>잉크 스테이션 스크레이퍼 청소</translation>
    </message>
    <message>
        <source>清洁整平棍及整平棍刮刀表面</source>
        <translation>레벨링 롤러와 블레이드 표면 청소</translation>
    </message>
    <message>
        <source>更换初效过滤器</source>
        <translation>프리필터 교체</translation>
    </message>
    <message>
        <source>X轴导轨上油</source>
        <translation>X축 가이드 레일 급유</translation>
    </message>
    <message>
        <source>Y轴导轨和电机丝杆上油</source>
        <translation>Y축 가이드 레일과 모터 스크루 급유</translation>
    </message>
    <message>
        <source>Z轴导轨和电机丝杆上油</source>
        <translation>Z축 가이드 레일과 모터 스크루 급유</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>정상</translation>
    </message>
    <message>
        <source>到期</source>
        <translation>기한 도래</translation>
    </message>
    <message>
        <source>超期</source>
        <translation>기한 초과</translation>
    </message>
    <message>
        <source>维护项目</source>
        <translation>유지보수 항목</translation>
    </message>
    <message>
        <source>剩余</source>
        <translation>남음</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>상태</translation>
    </message>
    <message>
        <source>当前维护循环</source>
        <translation>현재 주기</translation>
    </message>
    <message>
        <source>维护是否完成?</source>
        <translation>유지보수를 완료했습니까?</translation>
    </message>
</context>
<context>
    <name>MaterialForm</name>
    <message>
        <source>材料</source>
        <translation>재료</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>서포트 왁스</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>구조 왁스</translation>
    </message>
    <message>
        <source>墨瓶 1</source>
        <translation>보틀 1</translation>
    </message>
    <message>
        <source>墨瓶 2</source>
        <translation>보틀 2</translation>
    </message>
    <message>
        <source>墨瓶 3</source>
        <translation>보틀 3</translation>
    </message>
    <message>
        <source>墨瓶 4</source>
        <translation>보틀 4</translation>
    </message>
    <message>
        <source>触摸墨瓶查看详情</source>
        <translation>보틀을 누르면 상세 정보가 표시됩니다</translation>
    </message>
    <message>
        <source>缺失</source>
        <translation>없음</translation>
    </message>
    <message>
        <source>使用中</source>
        <translation>사용 중</translation>
    </message>
    <message>
        <source>已安装</source>
        <translation>장착됨</translation>
    </message>
    <message>
        <source>未安装</source>
        <translation>미장착</translation>
    </message>
    <message>
        <source>剩余重量</source>
        <translation>남은 무게</translation>
    </message>
    <message>
        <source>剩余比例</source>
        <translation>남은 비율</translation>
    </message>
    <message>
        <source>批号</source>
        <translation>로트 번호</translation>
    </message>
    <message>
        <source>过期日期</source>
        <translation>유효 기간</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>모델</translation>
    </message>
    <message>
        <source>材料状态</source>
        <translation>재료 상태</translation>
    </message>
    <message>
        <source>激活</source>
        <translation>활성화</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
</context>
<context>
    <name>MsgForm</name>
    <message>
        <source>否</source>
        <translation>아니요</translation>
    </message>
    <message>
        <source>是</source>
        <translation>예</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>알림</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>경고</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>오류</translation>
    </message>
</context>
<context>
    <name>NetForm</name>
    <message>
        <source>网络配置</source>
        <translation>네트워크 설정</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>설정</translation>
    </message>
    <message>
        <source>自动获取地址 (DHCP)</source>
        <translation>자동으로 주소 받기(DHCP)</translation>
    </message>
    <message>
        <source>IP地址</source>
        <translation>IP 주소</translation>
    </message>
    <message>
        <source>子网掩码</source>
        <translation>서브넷 마스크</translation>
    </message>
    <message>
        <source>默认网关</source>
        <translation>기본 게이트웨이</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>저장</translation>
    </message>
    <message>
        <source>IP地址无效，请检查</source>
        <translation>IP 주소가 올바르지 않습니다. 확인하십시오</translation>
    </message>
    <message>
        <source>子网掩码无效，请检查</source>
        <translation>서브넷 마스크가 올바르지 않습니다. 확인하십시오</translation>
    </message>
    <message>
        <source>默认网关无效或与IP地址不在同一网段，请检查</source>
        <translation>기본 게이트웨이가 올바르지 않거나 IP 주소와 같은 서브넷에 있지 않습니다. 확인하십시오</translation>
    </message>
    <message>
        <source>网卡未正常工作请检查网线是否正常连接，人工排查问题</source>
        <translation>네트워크 어댑터가 작동하지 않습니다. 케이블이 연결되어 있는지 확인하고 문제를 직접 점검하십시오</translation>
    </message>
    <message>
        <source>配置已取消</source>
        <translation>설정이 취소되었습니다</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>저장되었습니다</translation>
    </message>
</context>
<context>
    <name>PrintInfoForm</name>
    <message>
        <source>模型详情</source>
        <translation>모델 상세 정보</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>출력할 파일을 선택하십시오</translation>
    </message>
    <message>
        <source>模型名称</source>
        <translation>모델 이름</translation>
    </message>
    <message>
        <source>打印时间</source>
        <translation>출력 시간</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>구조 왁스</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>서포트 왁스</translation>
    </message>
    <message>
        <source>打印机模式</source>
        <translation>프린터 모드</translation>
    </message>
    <message>
        <source>估算层数</source>
        <translation>예상 레이어 수</translation>
    </message>
    <message>
        <source>体积</source>
        <translation>부피</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>출력 시작</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除</source>
        <translation>모델 파일이 손상되었거나 삭제되었습니다</translation>
    </message>
    <message>
        <source>没有预览图</source>
        <translation>미리보기 없음</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除，请重新添加</source>
        <translation>모델 파일이 손상되었거나 삭제되었습니다. 다시 추가하십시오</translation>
    </message>
</context>
<context>
    <name>PrintService</name>
    <message>
        <source> 切片中请稍后 %1.%2..(%3)</source>
        <translation> 슬라이싱 중입니다. 잠시 기다려 주십시오 %1.%2..(%3)</translation>
    </message>
    <message>
        <source>打印开始</source>
        <translation>출력 시작</translation>
    </message>
</context>
<context>
    <name>SetupForm</name>
    <message>
        <source>设置</source>
        <translation>설정</translation>
    </message>
    <message>
        <source>网络</source>
        <translation>네트워크</translation>
    </message>
    <message>
        <source>电子邮箱</source>
        <translation>이메일</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>언어</translation>
    </message>
    <message>
        <source>中文</source>
        <translation>중국어</translation>
    </message>
    <message>
        <source>英语</source>
        <translation>영어</translation>
    </message>
    <message>
        <source>土耳其语</source>
        <translation>튀르키예어</translation>
    </message>
    <message>
        <source>法语</source>
        <translation>프랑스어</translation>
    </message>
    <message>
        <source>韩语</source>
        <translation>한국어</translation>
    </message>
    <message>
        <source>资源文件拷贝失败</source>
        <translation>리소스 파일을 복사하지 못했습니다</translation>
    </message>
    <message>
        <source>即将重启?</source>
        <translation>지금 다시 시작하시겠습니까?</translation>
    </message>
</context>
<context>
    <name>StartCheck</name>
    <message>
        <source>更新完成请核对一下版本号，当前版本为</source>
        <translation>업데이트가 완료되었습니다. 버전 번호를 확인하십시오. 현재 버전</translation>
    </message>
    <message>
        <source>请确保切片软件版本大于V1.3.2</source>
        <translation>슬라이서 버전이 V1.3.2보다 높은지 확인하십시오</translation>
    </message>
</context>
<context>
    <name>ToolForm</name>
    <message>
        <source>工具</source>
        <translation>도구</translation>
    </message>
    <message>
        <source>打印机信息</source>
        <translation>프린터 정보</translation>
    </message>
    <message>
        <source>客户使用情况</source>
        <translation>사용 현황</translation>
    </message>
    <message>
        <source>诊断</source>
        <translation>진단</translation>
    </message>
    <message>
        <source>操作人员维护</source>
        <translation>작업자 유지보수</translation>
    </message>
    <message>
        <source>保存日志</source>
        <translation>로그 저장</translation>
    </message>
    <message>
        <source>U盘更新</source>
        <translation>USB 업데이트</translation>
    </message>
    <message>
        <source>电源选项</source>
        <translation>전원 옵션</translation>
    </message>
    <message>
        <source>曲线</source>
        <translation>추이 그래프</translation>
    </message>
    <message>
        <source>插入U盘后可以保存日志和更新</source>
        <translation>USB 메모리를 꽂으면 로그 저장과 업데이트를 할 수 있습니다</translation>
    </message>
    <message>
        <source>日志没有全部保存</source>
        <translation>일부 로그를 저장하지 못했습니다</translation>
    </message>
    <message>
        <source>已保存 %1 个日志文件</source>
        <translation>로그 파일 %1개를 저장했습니다</translation>
    </message>
    <message>
        <source>是否立即重启完成升级?</source>
        <translation>업데이트를 완료하기 위해 지금 다시 시작하시겠습니까?</translation>
    </message>
    <message>
        <source>是否关机，请确认，如果进入关机流程，只能断电重启</source>
        <translation>종료하시겠습니까? 종료 절차가 시작되면 전원을 껐다가 켜야만 다시 시작할 수 있습니다</translation>
    </message>
    <message>
        <source>请关闭电源</source>
        <translation>전원을 끄십시오</translation>
    </message>
    <message>
        <source>关机中,请稍后...</source>
        <translation>종료 중입니다. 잠시 기다려 주십시오...</translation>
    </message>
</context>
<context>
    <name>TrendForm</name>
    <message>
        <source>曲线</source>
        <translation>추이 그래프</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>墨管</source>
        <translation>튜브</translation>
    </message>
    <message>
        <source>结构</source>
        <translation>구조</translation>
    </message>
    <message>
        <source>支撑</source>
        <translation>서포트</translation>
    </message>
    <message>
        <source>喷头</source>
        <translation>헤드</translation>
    </message>
    <message>
        <source>整平</source>
        <translation>레벨링</translation>
    </message>
    <message>
        <source>气压</source>
        <translation>공기압</translation>
    </message>
    <message>
        <source>液位</source>
        <translation>레벨</translation>
    </message>
    <message>
        <source>结构负压%1</source>
        <translation>구조 %1</translation>
    </message>
    <message>
        <source>支撑负压%1</source>
        <translation>서포트 %1</translation>
    </message>
    <message>
        <source>正压</source>
        <translation>양압</translation>
    </message>
    <message>
        <source>喷头%1支撑液位</source>
        <translation>헤드 %1 서포트 레벨</translation>
    </message>
    <message>
        <source>喷头%1结构液位</source>
        <translation>헤드 %1 구조 레벨</translation>
    </message>
    <message>
        <source>触摸曲线查看该时刻的数值和事件</source>
        <translation>그래프를 누르면 그 시각의 값과 이벤트가 표시됩니다</translation>
    </message>
</context>
<context>
    <name>TrendPlot</name>
    <message>
        <source>没有数据</source>
        <translation>데이터 없음</translation>
    </message>
</context>
<context>
    <name>UserInfoForm</name>
    <message>
        <source>客户使用情况</source>
        <translation>사용 현황</translation>
    </message>
    <message>
        <source>打印机总时间</source>
        <translation>프린터 총 가동 시간</translation>
    </message>
    <message>
        <source>打印总时间</source>
        <translation>총 출력 시간</translation>
    </message>
    <message>
        <source>连续运行时间</source>
        <translation>연속 가동 시간</translation>
    </message>
    <message>
        <source>使用总结构材料</source>
        <translation>구조 왁스 총사용량</translation>
    </message>
    <message>
        <source>使用总支撑材料</source>
        <translation>서포트 왁스 총사용량</translation>
    </message>
    <message>
        <source>图层已打印</source>
        <translation>출력한 레이어</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
</context>
<context>
    <name>WarningForm</name>
    <message>
        <source>警告</source>
        <translation>경고</translation>
    </message>
    <message>
        <source>当前没有警告</source>
        <translation>현재 경고가 없습니다</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <source>错误代码</source>
        <translation>오류 코드</translation>
    </message>
    <message>
        <source>事件内容</source>
        <translation>이벤트 내용</translation>
    </message>
</context>
</TS>
