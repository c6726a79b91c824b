<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="tr_TR" sourcelanguage="zh_CN">
<context>
    <name>AddFileForm</name>
    <message>
        <source>添加文件</source>
        <translation>Dosya ekle</translation>
    </message>
    <message>
        <source>点选要添加到打印队列的文件</source>
        <translation>Baskı kuyruğuna eklenecek dosyalara dokunun</translation>
    </message>
    <message>
        <source>U盘中没有模型文件</source>
        <translation>USB bellekte model dosyası yok</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Ekle</translation>
    </message>
    <message>
        <source>正在使用，未添加</source>
        <translation>Kullanımda, eklenmedi</translation>
    </message>
    <message>
        <source>文件名无效，未添加</source>
        <translation>Dosya adı geçersiz, eklenmedi</translation>
    </message>
    <message>
        <source>复制失败，请检查U盘和磁盘空间</source>
        <translation>Kopyalanamadı, lütfen USB belleği ve disk alanını kontrol edin</translation>
    </message>
    <message>
        <source>文件损坏，无法打印</source>
        <translation>Dosya bozuk, basılamaz</translation>
    </message>
    <message>
        <source>%1个文件已添加，%2个有问题：</source>
        <translation>%1 dosya eklendi, %2 sorunlu:</translation>
    </message>
</context>
<context>
    <name>BackgroundService</name>
    <message>
        <source>设置喷头参数异常，请重启</source>
        <translation>Kafa parametreleri ayarlanamadı, lütfen yeniden başlatın</translation>
    </message>
    <message>
        <source>检测到喷头异常(%1)，请尝试断电重启(检查 喷头控制板连接)</source>
        <translation>Kafa arızası algılandı (%1), lütfen makineyi kapatıp açın (kafa kartı bağlantısını kontrol edin)</translation>
    </message>
</context>
<context>
    <name>DebugForm</name>
    <message>
        <source>诊断</source>
        <translation>Tanılama</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>拉墨站测试</source>
        <translation>Mürekkep istasyonu testi</translation>
    </message>
    <message>
        <source>打点</source>
        <translation>Nokta baskısı</translation>
    </message>
    <message>
        <source>Z轴测试</source>
        <translation>Z ekseni testi</translation>
    </message>
    <message>
        <source>循环挤蜡</source>
        <translation>Döngülü mum tahliyesi</translation>
    </message>
    <message>
        <source>喷头归一化值</source>
        <translation>Kafa norm değerleri</translation>
    </message>
    <message>
        <source>喷头</source>
        <translation>Kafa</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>Malzeme</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Destek mumu</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Yapı mumu</translation>
    </message>
    <message>
        <source>偏移量</source>
        <translation>Ofset</translation>
    </message>
    <message>
        <source>生成修改值</source>
        <translation>Değişeni oluştur</translation>
    </message>
    <message>
        <source>写入原始值</source>
        <translation>Özgünü yaz</translation>
    </message>
    <message>
        <source>写入修改值</source>
        <translation>Değişeni yaz</translation>
    </message>
    <message>
        <source>请稍后，准备中...</source>
        <translation>Lütfen bekleyin, hazırlanıyor...</translation>
    </message>
    <message>
        <source>墨站是否正确放置，运动范围内是否清洁</source>
        <translation>Mürekkep istasyonu doğru yerleştirildi mi, hareket alanı temiz mi?</translation>
    </message>
    <message>
        <source>X轴错误(%1)</source>
        <translation>X ekseni hatası (%1)</translation>
    </message>
    <message>
        <source>关闭弹窗后完成测试</source>
        <translation>Bu pencere kapatıldığında test sona erer</translation>
    </message>
    <message>
        <source>请稍后，测试即将完成</source>
        <translation>Lütfen bekleyin, test bitiyor</translation>
    </message>
    <message>
        <source>测试完成(%1)</source>
        <translation>Test tamamlandı (%1)</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Lütfen bir baskı dosyası seçin</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>Platform yerinde değil</translation>
    </message>
    <message>
        <source>是否运动测试？</source>
        <translation>Hareket testi yapılsın mı?</translation>
    </message>
    <message>
        <source>测试时注意人工观察是否异常，Z轴即将回零进行0~145000往复运动？</source>
        <translation>Test sırasında anormallik olup olmadığını gözleyin. Z ekseni sıfıra gidip 0~145000 arasında hareket edecek. Devam edilsin mi?</translation>
    </message>
    <message>
        <source>请稍后，运动测试即将完成</source>
        <translation>Lütfen bekleyin, hareket testi bitiyor</translation>
    </message>
    <message>
        <source>测试完成，请拷贝日志查看测试次数</source>
        <translation>Test tamamlandı. Tur sayısını görmek için günlükleri kopyalayın</translation>
    </message>
    <message>
        <source>机器处于非空闲状态(打印/暂停)，无法进行此流程</source>
        <translation>Makine boşta değil (baskı/duraklatma), bu işlem yapılamaz</translation>
    </message>
    <message>
        <source>请确认喷头下方没有异物，否则将损坏喷头，Z轴即将上下运动？</source>
        <translation>Kafaların altında hiçbir şey olmadığından emin olun, aksi hâlde kafalar hasar görür. Z ekseni yukarı ve aşağı hareket edecek. Devam edilsin mi?</translation>
    </message>
    <message>
        <source>Z 轴运动中，请注意观察</source>
        <translation>Z ekseni hareket ediyor, lütfen izleyin</translation>
    </message>
    <message>
        <source>喷头下方是否放置容器，即将开始挤蜡？</source>
        <translation>Kafaların altında kap var mı? Mum tahliyesi başlayacak</translation>
    </message>
    <message>
        <source>是否取消挤蜡？</source>
        <translation>Tahliye iptal edilsin mi?</translation>
    </message>
    <message>
        <source>请稍后，挤蜡即将完成</source>
        <translation>Lütfen bekleyin, tahliye bitiyor</translation>
    </message>
    <message>
        <source>挤蜡完成</source>
        <translation>Tahliye tamamlandı</translation>
    </message>
    <message>
        <source>打印时不能读写归一化值</source>
        <translation>Baskı sırasında norm değerleri okunamaz ve yazılamaz</translation>
    </message>
    <message>
        <source>归一化值读写失败(%1)，请查看日志</source>
        <translation>Norm değerleri okunamadı veya yazılamadı (%1), lütfen günlüğe bakın</translation>
    </message>
    <message>
        <source>归一化值读写完成</source>
        <translation>Norm değerleri okundu ve yazıldı</translation>
    </message>
    <message>
        <source>将喷头%1 %2的归一化值加上偏移量，存为修改值？</source>
        <translation>Kafa %1 %2: norm değerlerine ofset eklenip değiştirilmiş değerler olarak kaydedilsin mi?</translation>
    </message>
    <message>
        <source>将原始归一化值写入喷头%1 %2？</source>
        <translation>Özgün norm değerleri yazılsın mı? Kafa %1 %2</translation>
    </message>
    <message>
        <source>将修改后的归一化值写入喷头%1 %2？</source>
        <translation>Değiştirilmiş norm değerleri yazılsın mı? Kafa %1 %2</translation>
    </message>
</context>
<context>
    <name>EmailForm</name>
    <message>
        <source>电子邮箱通知</source>
        <translation>E-posta bildirimleri</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>邮件服务器</source>
        <translation>E-posta sunucusu</translation>
    </message>
    <message>
        <source>发件人</source>
        <translation>Gönderen</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Parola</translation>
    </message>
    <message>
        <source>使用SSL/TLS加密</source>
        <translation>SSL/TLS şifrelemesi kullan</translation>
    </message>
    <message>
        <source>收件人</source>
        <translation>Alıcılar</translation>
    </message>
    <message>
        <source>蜡材容量</source>
        <translation>Mum miktarı</translation>
    </message>
    <message>
        <source>打印开始/停止</source>
        <translation>Baskı başladı/durdu</translation>
    </message>
    <message>
        <source>设备异常</source>
        <translation>Makine arızaları</translation>
    </message>
    <message>
        <source>设备维护</source>
        <translation>Bakım</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Sıfırla</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>Uygula</translation>
    </message>
    <message>
        <source>正在发送测试邮件，请稍候</source>
        <translation>Sınama e-postası gönderiliyor, lütfen bekleyin</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Kaydedildi</translation>
    </message>
</context>
<context>
    <name>EventHandler</name>
    <message>
        <source>该事件未发生</source>
        <translation>Bu olay gerçekleşmedi</translation>
    </message>
    <message>
        <source>首次发生时间: </source>
        <translation>İlk oluşma zamanı: </translation>
    </message>
    <message>
        <source>发生次数: %1</source>
        <translation>Sayı: %1</translation>
    </message>
    <message>
        <source>事件: %1</source>
        <translation>Olay: %1</translation>
    </message>
    <message>
        <source> (当前值%1&gt;设定值%2) </source>
        <translation> (değer %1 &gt; ayar değeri %2) </translation>
    </message>
    <message>
        <source> (当前值%1&lt;设定值%2) </source>
        <translation> (değer %1 &lt; ayar değeri %2) </translation>
    </message>
    <message>
        <source>success</source>
        <translation>başarılı</translation>
    </message>
    <message>
        <source>喷头%1液位异常，请断电重启</source>
        <translation>Kafa %1 mürekkep seviyesi anormal, lütfen makineyi kapatıp açın</translation>
    </message>
    <message>
        <source>CAN 异常-%1 </source>
        <translation>CAN arızası - %1 </translation>
    </message>
    <message>
        <source>更新第%1个墨瓶</source>
        <translation>Şişe %1 değiştirildi</translation>
    </message>
    <message>
        <source>墨瓶%1放错位置</source>
        <translation>Şişe %1 yanlış yerde</translation>
    </message>
    <message>
        <source>卡片读取失败%1</source>
        <translation>Kart %1 okunamadı</translation>
    </message>
    <message>
        <source>卡片写入失败%1</source>
        <translation>Kart %1 yazılamadı</translation>
    </message>
    <message>
        <source>整平棍异常 当前转速%1</source>
        <translation>Düzleme silindiri arızası, şu anki hız %1</translation>
    </message>
    <message>
        <source>请关闭墨箱门，否则无法供墨</source>
        <translation>Lütfen mürekkep kutusunun kapağını kapatın, aksi hâlde mum beslenemez</translation>
    </message>
    <message>
        <source>墨栈光电状态异常</source>
        <translation>Mürekkep istasyonu ışık sensörü anormal</translation>
    </message>
    <message>
        <source>气压恢复中(%1,%2,%3)</source>
        <translation>Hava basıncı toparlanıyor (%1,%2,%3)</translation>
    </message>
    <message>
        <source>此模型(%1)不适用于当前机器(%2),是否继续打印</source>
        <translation>Bu model (%1) bu makineye (%2) uygun değil. Yine de basılsın mı?</translation>
    </message>
    <message>
        <source>请稍后，加热中(保温-&gt;打印)</source>
        <translation>Lütfen bekleyin, ısıtılıyor (sıcak tutma -&gt; baskı)</translation>
    </message>
    <message>
        <source>整平棍转速异常</source>
        <translation>Düzleme silindiri hızı anormal</translation>
    </message>
    <message>
        <source>停止打印</source>
        <translation>Baskı durduruldu</translation>
    </message>
    <message>
        <source>打印超时</source>
        <translation>Baskı zaman aşımına uğradı</translation>
    </message>
    <message>
        <source>COM%1串口打开失败，请重启</source>
        <translation>COM%1 seri portu açılamadı, lütfen yeniden başlatın</translation>
    </message>
    <message>
        <source>配置文件丢失</source>
        <translation>Yapılandırma dosyası kayıp</translation>
    </message>
    <message>
        <source>打印完成</source>
        <translation>Baskı tamamlandı</translation>
    </message>
    <message>
        <source>打印失败</source>
        <translation>Baskı başarısız</translation>
    </message>
    <message>
        <source>结构墨瓶空</source>
        <translation>Yapı şişesi boş</translation>
    </message>
    <message>
        <source>支撑墨瓶空</source>
        <translation>Destek şişesi boş</translation>
    </message>
    <message>
        <source>未检测到升级文件</source>
        <translation>Güncelleme dosyası bulunamadı</translation>
    </message>
    <message>
        <source>X 轴停止运动超时</source>
        <translation>X ekseni zamanında durmadı</translation>
    </message>
    <message>
        <source>Y 轴停止运动超时</source>
        <translation>Y ekseni zamanında durmadı</translation>
    </message>
    <message>
        <source>Z 轴停止运动超时</source>
        <translation>Z ekseni zamanında durmadı</translation>
    </message>
    <message>
        <source>支撑墨管温度1</source>
        <translation>Destek hortumu sıc. 1</translation>
    </message>
    <message>
        <source>支撑墨管温度2</source>
        <translation>Destek hortumu sıc. 2</translation>
    </message>
    <message>
        <source>支撑墨管温度3</source>
        <translation>Destek hortumu sıc. 3</translation>
    </message>
    <message>
        <source>结构墨管温度1</source>
        <translation>Yapı hortumu sıc. 1</translation>
    </message>
    <message>
        <source>结构墨管温度2</source>
        <translation>Yapı hortumu sıc. 2</translation>
    </message>
    <message>
        <source>结构墨管温度3</source>
        <translation>Yapı hortumu sıc. 3</translation>
    </message>
    <message>
        <source>结构阀岛温度1</source>
        <translation>Yapı valf adası sıc. 1</translation>
    </message>
    <message>
        <source>结构阀岛温度2</source>
        <translation>Yapı valf adası sıc. 2</translation>
    </message>
    <message>
        <source>结构料桶温度1</source>
        <translation>Yapı haznesi sıc. 1</translation>
    </message>
    <message>
        <source>结构料桶温度2</source>
        <translation>Yapı haznesi sıc. 2</translation>
    </message>
    <message>
        <source>结构墨管输出控制阀温度</source>
        <translation>Yapı çıkış valfi sıc.</translation>
    </message>
    <message>
        <source>支撑阀岛温度1</source>
        <translation>Destek valf adası sıc. 1</translation>
    </message>
    <message>
        <source>支撑阀岛温度2</source>
        <translation>Destek valf adası sıc. 2</translation>
    </message>
    <message>
        <source>支撑料桶温度1</source>
        <translation>Destek haznesi sıc. 1</translation>
    </message>
    <message>
        <source>支撑料桶温度2</source>
        <translation>Destek haznesi sıc. 2</translation>
    </message>
    <message>
        <source>支撑墨管输出控制阀温度</source>
        <translation>Destek çıkış valfi sıc.</translation>
    </message>
    <message>
        <source>喷头黄铜温度1</source>
        <translation>Kafa pirinç sıc. 1</translation>
    </message>
    <message>
        <source>喷头黄铜温度2</source>
        <translation>Kafa pirinç sıc. 2</translation>
    </message>
    <message>
        <source>喷头黄铜温度3</source>
        <translation>Kafa pirinç sıc. 3</translation>
    </message>
    <message>
        <source>整平辊温度</source>
        <translation>Düzleme silindiri sıc.</translation>
    </message>
    <message>
        <source>整平刮刀温度</source>
        <translation>Düzleme sıyırıcısı sıc.</translation>
    </message>
    <message>
        <source>整平腔废墨出口温度</source>
        <translation>Düzleme atık çıkışı sıc.</translation>
    </message>
    <message>
        <source>废墨管温度</source>
        <translation>Atık hortumu sıc.</translation>
    </message>
    <message>
        <source>喷头温度1</source>
        <translation>Kafa sıcaklığı 1</translation>
    </message>
    <message>
        <source>喷头温度2</source>
        <translation>Kafa sıcaklığı 2</translation>
    </message>
    <message>
        <source>喷头温度3</source>
        <translation>Kafa sıcaklığı 3</translation>
    </message>
    <message>
        <source>结构阀岛供墨失败</source>
        <translation>Yapı valf adası beslemesi başarısız</translation>
    </message>
    <message>
        <source>支撑阀岛供墨失败</source>
        <translation>Destek valf adası beslemesi başarısız</translation>
    </message>
    <message>
        <source>喷头供墨异常</source>
        <translation>Kafa mürekkep beslemesi anormal</translation>
    </message>
    <message>
        <source>日常维护项目已过期,请打开维护页面查询!</source>
        <translation>Bir bakım işinin süresi geçti, lütfen bakım sayfasını açın!</translation>
    </message>
</context>
<context>
    <name>FileForm</name>
    <message>
        <source>打印队列</source>
        <translation>Baskı kuyruğu</translation>
    </message>
    <message>
        <source>等待打印</source>
        <translation>Bekleyen</translation>
    </message>
    <message>
        <source>已完成</source>
        <translation>Tamamlanan</translation>
    </message>
    <message>
        <source>已中止</source>
        <translation>İptal edilen</translation>
    </message>
    <message>
        <source>重打</source>
        <translation>Yeniden bas</translation>
    </message>
    <message>
        <source>U盘添加</source>
        <translation>USB&apos;den ekle</translation>
    </message>
    <message>
        <source>文件拷贝中</source>
        <translation>Dosya kopyalanıyor</translation>
    </message>
    <message>
        <source>从 %1 到 %2</source>
        <translation>Kaynak: %1, hedef: %2</translation>
    </message>
</context>
<context>
    <name>FirmwareUpdate</name>
    <message>
        <source>准备升级，请稍后</source>
        <translation>Güncelleme hazırlanıyor, lütfen bekleyin</translation>
    </message>
    <message>
        <source>模式切换错误，升级失败(%1!=%2)</source>
        <translation>Kip değiştirme hatası, güncelleme başarısız (%1!=%2)</translation>
    </message>
    <message>
        <source>升级模式切换错误，升级失败,请断电重启(%1 != %2)</source>
        <translation>Güncelleme kipine geçiş hatası, güncelleme başarısız, lütfen makineyi kapatıp açın (%1 != %2)</translation>
    </message>
    <message>
        <source>数据发送错误，升级失败重启后将重新升级</source>
        <translation>Veri gönderme hatası, güncelleme başarısız; yeniden başlatıldıktan sonra tekrarlanır</translation>
    </message>
    <message>
        <source>%1#电路板升级中</source>
        <translation>%1 numaralı kart güncelleniyor</translation>
    </message>
    <message>
        <source>所有电路升级完成,请断电重启</source>
        <translation>Tüm kartlar güncellendi, lütfen makineyi kapatıp açın</translation>
    </message>
</context>
<context>
    <name>HomeForm</name>
    <message>
        <source>预热中... ...</source>
        <translation>Ön ısıtma ...</translation>
    </message>
    <message>
        <source>进       度</source>
        <translation>İlerleme</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Lütfen bir baskı dosyası seçin</translation>
    </message>
    <message>
        <source>剩余时间</source>
        <translation>Kalan süre</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Yapı mumu</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Destek mumu</translation>
    </message>
    <message>
        <source>开始打印时间</source>
        <translation>Baskı başlangıcı</translation>
    </message>
    <message>
        <source>预计完成时间</source>
        <translation>Tahmini bitiş</translation>
    </message>
    <message>
        <source>中止</source>
        <translation>İptal et</translation>
    </message>
    <message>
        <source>前门</source>
        <translation>Ön kapı</translation>
    </message>
    <message>
        <source>请移动到 非系统磁盘</source>
        <translation>Lütfen programı sistem diski olmayan bir diske taşıyın</translation>
    </message>
    <message>
        <source>磁盘空间不足，总共: %1GB,已用: %2 GB 请及时清理模型</source>
        <translation>Disk alanı yetersiz. Toplam: %1 GB, kullanılan: %2 GB. Lütfen modelleri en kısa sürede temizleyin</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Duraklat</translation>
    </message>
    <message>
        <source>继续</source>
        <translation>Devam et</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>Baskıyı başlat</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>Platform yerinde değil</translation>
    </message>
    <message>
        <source>平台是否为空?</source>
        <translation>Platform boş mu?</translation>
    </message>
    <message>
        <source>清空废料箱</source>
        <translation>Atık kutusunu boşaltın</translation>
    </message>
    <message>
        <source>是否中止打印</source>
        <translation>Baskı iptal edilsin mi?</translation>
    </message>
    <message>
        <source>打印中... ...</source>
        <translation>Basılıyor ...</translation>
    </message>
    <message>
        <source>保温中... ...</source>
        <translation>Sıcak tutuluyor ...</translation>
    </message>
    <message>
        <source>模型文件损坏</source>
        <translation>Model dosyası bozuk</translation>
    </message>
</context>
<context>
    <name>JobNeeds</name>
    <message>
        <source>等待任务需要</source>
        <translation>Bekleyen işler için gereken</translation>
    </message>
    <message>
        <source>缺 %1 g</source>
        <translation>%1 g eksik</translation>
    </message>
    <message>
        <source>%1 个未知</source>
        <translation>%1 bilinmiyor</translation>
    </message>
    <message>
        <source>够</source>
        <translation>yeterli</translation>
    </message>
</context>
<context>
    <name>LayerPicture</name>
    <message>
        <source>第 %1 层</source>
        <translation>Katman %1</translation>
    </message>
</context>
<context>
    <name>MachineForm</name>
    <message>
        <source>打印机信息</source>
        <translation>Yazıcı bilgileri</translation>
    </message>
    <message>
        <source>打印机型号</source>
        <translation>Yazıcı modeli</translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation>Yazılım sürümü</translation>
    </message>
    <message>
        <source>固件更新时间</source>
        <translation>Yazılım güncelleme tarihi</translation>
    </message>
    <message>
        <source>设备序列号</source>
        <translation>Makine seri numarası</translation>
    </message>
    <message>
        <source>MAC地址</source>
        <translation>MAC adresi</translation>
    </message>
    <message>
        <source>Hib版本</source>
        <translation>Hib sürümü</translation>
    </message>
    <message>
        <source>切片版本</source>
        <translation>Dilimleyici sürümü</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>产品型号：</source>
        <translation>Ürün modeli: </translation>
    </message>
    <message>
        <source>主页</source>
        <translation>Ana sayfa</translation>
    </message>
    <message>
        <source>队列</source>
        <translation>Kuyruk</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>Malzeme</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Araçlar</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Ayarlar</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Sıcaklık</translation>
    </message>
    <message>
        <source>供墨</source>
        <translation>Mürekkep besleme</translation>
    </message>
</context>
<context>
    <name>MaintainForm</name>
    <message>
        <source>操作人员维护</source>
        <translation>Operatör bakımı</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>清洁顶部风扇过滤棉</source>
        <translation>Üst fan filtresini temizleyin</translation>
    </message>
    <message>
        <source>清洁初效过滤器</source>
        <translation>Ön filtreyi temizleyin</translation>
    </message>
    <message>
        <source>清洁外表面</source>
        <translation>Dış yüzeyleri temizleyin</translation>
    </message>
    <message>
        <source>清洁喷车底板非喷头安装区域</source>
        <translation>Taşıyıcı tabanını kafa yuvaları dışında temizleyin</translation>
    </message>
    <message>
        <source>清洁Y梁底面</source>
        <translation>Y kirişinin alt yüzünü temizleyin</translation>
    </message>
    <message>
        <source>滚筒吸粉管道除粉</source>
        <translation>Silindir emiş borusundaki tozu temizleyin</translation>
    </message>
    <message>
        <source>清洁墨站刮刀</source>
        <translation>Mürekkep istasyonu sıyırıcısını temizleyin</translation>
    </message>
    <message>
        <source>清洁整平棍及整平棍刮刀表面</source>
        <translation>Düzleme silindirini ve sıyırıcısını temizleyin</translation>
    </message>
    <message>
        <source>更换初效过滤器</source>
        <translation>Ön filtreyi değiştirin</translation>
    </message>
    <message>
        <source>X轴导轨上油</source>
        <translation>X rayını yağlayın</translation>
    </message>
    <message>
        <source>Y轴导轨和电机丝杆上油</source>
        <translation>Y rayını ve motor milini yağlayın</translation>
    </message>
    <message>
        <source>Z轴导轨和电机丝杆上油</source>
        <translation>Z rayını ve motor milini yağlayın</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>到期</source>
        <translation>Zamanı geldi</translation>
    </message>
    <message>
        <source>超期</source>
        <translation>Gecikti</translation>
    </message>
    <message>
        <source>维护项目</source>
        <translation>Bakım işi</translation>
    </message>
    <message>
        <source>剩余</source>
        <translation>Kalan</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>Durum</translation>
    </message>
    <message>
        <source>当前维护循环</source>
        <translation>bu döngüde</translation>
    </message>
    <message>
        <source>维护是否完成?</source>
        <translation>Bakım tamamlandı mı?</translation>
    </message>
</context>
<context>
    <name>MaterialForm</name>
    <message>
        <source>材料</source>
        <translation>Malzeme</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Destek mumu</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Yapı mumu</translation>
    </message>
    <message>
        <source>墨瓶 1</source>
        <translation>Şişe 1</translation>
    </message>
    <message>
        <source>墨瓶 2</source>
        <translation>Şişe 2</translation>
    </message>
    <message>
        <source>墨瓶 3</source>
        <translation>Şişe 3</translation>
    </message>
    <message>
        <source>墨瓶 4</source>
        <translation>Şişe 4</translation>
    </message>
    <message>
        <source>触摸墨瓶查看详情</source>
        <translation>Ayrıntılar için bir şişeye dokunun</translation>
    </message>
    <message>
        <source>缺失</source>
        <translation>Eksik</translation>
    </message>
    <message>
        <source>使用中</source>
        <translation>Kullanımda</translation>
    </message>
    <message>
        <source>已安装</source>
        <translation>Takılı</translation>
    </message>
    <message>
        <source>未安装</source>
        <translation>Takılı değil</translation>
    </message>
    <message>
        <source>剩余重量</source>
        <translation>Kalan ağırlık</translation>
    </message>
    <message>
        <source>剩余比例</source>
        <translation>Kalan oran</translation>
    </message>
    <message>
        <source>批号</source>
        <translation>Parti no.</translation>
    </message>
    <message>
        <source>过期日期</source>
        <translation>Son kullanma tarihi</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>材料状态</source>
        <translation>Malzeme durumu</translation>
    </message>
    <message>
        <source>激活</source>
        <translation>Etkinleştir</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Kapat</translation>
    </message>
</context>
<context>
    <name>MsgForm</name>
    <message>
        <source>否</source>
        <translation>Hayır</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Evet</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Kapat</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Bilgi</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Uyarı</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Hata</translation>
    </message>
</context>
<context>
    <name>NetForm</name>
    <message>
        <source>网络配置</source>
        <translation>Ağ yapılandırması</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Ayarlar</translation>
    </message>
    <message>
        <source>自动获取地址 (DHCP)</source>
        <translation>Adresi otomatik al (DHCP)</translation>
    </message>
    <message>
        <source>IP地址</source>
        <translation>IP adresi</translation>
    </message>
    <message>
        <source>子网掩码</source>
        <translation>Alt ağ maskesi</translation>
    </message>
    <message>
        <source>默认网关</source>
        <translation>Varsayılan ağ geçidi</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Kaydet</translation>
    </message>
    <message>
        <source>IP地址无效，请检查</source>
        <translation>IP adresi geçersiz, lütfen kontrol edin</translation>
    </message>
    <message>
        <source>子网掩码无效，请检查</source>
        <translation>Alt ağ maskesi geçersiz, lütfen kontrol edin</translation>
    </message>
    <message>
        <source>默认网关无效或与IP地址不在同一网段，请检查</source>
        <translation>Varsayılan ağ geçidi geçersiz ya da IP adresinin alt ağında değil, lütfen kontrol edin</translation>
    </message>
    <message>
        <source>网卡未正常工作请检查网线是否正常连接，人工排查问题</source>
        <translation>Ağ bağdaştırıcısı çalışmıyor. Lütfen ağ kablosunun bağlı olduğunu kontrol edin ve sorunu elle araştırın</translation>
    </message>
    <message>
        <source>配置已取消</source>
        <translation>Yapılandırma iptal edildi</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Kaydedildi</translation>
    </message>
</context>
<context>
    <name>PrintInfoForm</name>
    <message>
        <source>模型详情</source>
        <translation>Model ayrıntıları</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Lütfen bir baskı dosyası seçin</translation>
    </message>
    <message>
        <source>模型名称</source>
        <translation>Model adı</translation>
    </message>
    <message>
        <source>打印时间</source>
        <translation>Baskı süresi</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Yapı mumu</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Destek mumu</translation>
    </message>
    <message>
        <source>打印机模式</source>
        <translation>Yazıcı kipi</translation>
    </message>
    <message>
        <source>估算层数</source>
        <translation>Tahmini katman sayısı</translation>
    </message>
    <message>
        <source>体积</source>
        <translation>Boyutlar</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>Baskıyı başlat</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除</source>
        <translation>Model dosyası bozuk veya silinmiş</translation>
    </message>
    <message>
        <source>没有预览图</source>
        <translation>Önizleme yok</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除，请重新添加</source>
        <translation>Model dosyası bozuk veya silinmiş, lütfen yeniden ekleyin</translation>
    </message>
</context>
<context>
    <name>PrintService</name>
    <message>
        <source> 切片中请稍后 %1.%2..(%3)</source>
        <translation> Dilimleniyor, lütfen bekleyin %1.%2..(%3)</translation>
    </message>
    <message>
        <source>打印开始</source>
        <translation>Baskı başladı</translation>
    </message>
</context>
<context>
    <name>SetupForm</name>
    <message>
        <source>设置</source>
        <translation>Ayarlar</translation>
    </message>
    <message>
        <source>网络</source>
        <translation>Ağ</translation>
    </message>
    <message>
        <source>电子邮箱</source>
        <translation>E-posta</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Dil</translation>
    </message>
    <message>
        <source>中文</source>
        <translation>Çince</translation>
    </message>
    <message>
        <source>英语</source>
        <translation>İngilizce</translation>
    </message>
    <message>
        <source>土耳其语</source>
        <translation>Türkçe</translation>
    </message>
    <message>
        <source>法语</source>
        <translation>Fransızca</translation>
    </message>
    <message>
        <source>韩语</source>
        <translation>Korece</translation>
    </message>
    <message>
        <source>资源文件拷贝失败</source>
        <translation>Kaynak dosyası kopyalanamadı</translation>
    </message>
    <message>
        <source>即将重启?</source>
        <translation>Şimdi yeniden başlatılsın mı?</translation>
    </message>
</context>
<context>
    <name>StartCheck</name>
    <message>
        <source>更新完成请核对一下版本号，当前版本为</source>
        <translation>Güncelleme tamamlandı, lütfen sürüm numarasını kontrol edin. Şu anki sürüm</translation>
    </message>
    <message>
        <source>请确保切片软件版本大于V1.3.2</source>
        <translation>Lütfen dilimleyici sürümünün V1.3.2 üzerinde olduğundan emin olun</translation>
    </message>
</context>
<context>
    <name>ToolForm</name>
    <message>
        <source>工具</source>
        <translation>Araçlar</translation>
    </message>
    <message>
        <source>打印机信息</source>
        <translation>Yazıcı bilgileri</translation>
    </message>
    <message>
        <source>客户使用情况</source>
        <translation>Kullanım bilgileri</translation>
    </message>
    <message>
        <source>诊断</source>
        <translation>Tanılama</translation>
    </message>
    <message>
        <source>操作人员维护</source>
        <translation>Operatör bakımı</translation>
    </message>
    <message>
        <source>保存日志</source>
        <translation>Günlükleri kaydet</translation>
    </message>
    <message>
        <source>U盘更新</source>
        <translation>USB&apos;den güncelle</translation>
    </message>
    <message>
        <source>电源选项</source>
        <translation>Güç seçenekleri</translation>
    </message>
    <message>
        <source>曲线</source>
        <translation>Grafikler</translation>
    </message>
    <message>
        <source>插入U盘后可以保存日志和更新</source>
        <translation>Günlükleri kaydetmek ve güncellemek için USB bellek takın</translation>
    </message>
    <message>
        <source>日志没有全部保存</source>
        <translation>Günlüklerin tümü kaydedilemedi</translation>
    </message>
    <message>
        <source>已保存 %1 个日志文件</source>
        <translation>%1 günlük dosyası kaydedildi</translation>
    </message>
    <message>
        <source>是否立即重启完成升级?</source>
        <translation>Güncellemeyi tamamlamak için şimdi yeniden başlatılsın mı?</translation>
    </message>
    <message>
        <source>是否关机，请确认，如果进入关机流程，只能断电重启</source>
        <translation>Kapatılsın mı? Lütfen onaylayın: kapatma başladıktan sonra makine yalnızca güç kesilip verilerek yeniden başlatılabilir</translation>
    </message>
    <message>
        <source>请关闭电源</source>
        <translation>Lütfen ana şalteri kapatın</translation>
    </message>
    <message>
        <source>关机中,请稍后...</source>
        <translation>Kapatılıyor, lütfen bekleyin...</translation>
    </message>
</context>
<context>
    <name>TrendForm</name>
    <message>
        <source>曲线</source>
        <translation>Grafikler</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>墨管</source>
        <translation>Hortumlar</translation>
    </message>
    <message>
        <source>结构</source>
        <translation>Yapı</translation>
    </message>
    <message>
        <source>支撑</source>
        <translation>Destek</translation>
    </message>
    <message>
        <source>喷头</source>
        <translation>Kafalar</translation>
    </message>
    <message>
        <source>整平</source>
        <translation>Düzleme</translation>
    </message>
    <message>
        <source>气压</source>
        <translation>Hava</translation>
    </message>
    <message>
        <source>液位</source>
        <translation>Seviyeler</translation>
    </message>
    <message>
        <source>结构负压%1</source>
        <translation>Yapı %1</translation>
    </message>
    <message>
        <source>支撑负压%1</source>
        <translation>Destek %1</translation>
    </message>
    <message>
        <source>正压</source>
        <translation>Pozitif</translation>
    </message>
    <message>
        <source>喷头%1支撑液位</source>
        <translation>Kafa %1 destek seviyesi</translation>
    </message>
    <message>
        <source>喷头%1结构液位</source>
        <translation>Kafa %1 yapı seviyesi</translation>
    </message>
    <message>
        <source>触摸曲线查看该时刻的数值和事件</source>
        <translation>O andaki değerler ve olaylar için grafiğe dokunun</translation>
    </message>
</context>
<context>
    <name>TrendPlot</name>
    <message>
        <source>没有数据</source>
        <translation>Veri yok</translation>
    </message>
</context>
<context>
    <name>UserInfoForm</name>
    <message>
        <source>客户使用情况</source>
        <translation>Kullanım bilgileri</translation>
    </message>
    <message>
        <source>打印机总时间</source>
        <translation>Yazıcının toplam süresi</translation>
    </message>
    <message>
        <source>打印总时间</source>
        <translation>Toplam baskı süresi</translation>
    </message>
    <message>
        <source>连续运行时间</source>
        <translation>Kesintisiz çalışma süresi</translation>
    </message>
    <message>
        <source>使用总结构材料</source>
        <translation>Kullanılan yapı mumu</translation>
    </message>
    <message>
        <source>使用总支撑材料</source>
        <translation>Kullanılan destek mumu</translation>
    </message>
    <message>
        <source>图层已打印</source>
        <translation>Basılan katmanlar</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
</context>
<context>
    <name>WarningForm</name>
    <message>
        <source>警告</source>
        <translation>Uyarılar</translation>
    </message>
    <message>
        <source>当前没有警告</source>
        <translation>Şu anda uyarı yok</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Geri</translation>
    </message>
    <message>
        <source>错误代码</source>
        <translation>Hata kodu</translation>
    </message>
    <message>
        <source>事件内容</source>
        <translation>Olay</translation>
    </message>
</context>
</TS>
