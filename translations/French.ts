<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="zh_CN">
<context>
    <name>AddFileForm</name>
    <message>
        <source>添加文件</source>
        <translation>Ajouter des fichiers</translation>
    </message>
    <message>
        <source>点选要添加到打印队列的文件</source>
        <translation>Touchez les fichiers à ajouter à la file d&apos;impression</translation>
    </message>
    <message>
        <source>U盘中没有模型文件</source>
        <translation>Aucun fichier de modèle sur la clé USB</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>正在使用，未添加</source>
        <translation>En cours d&apos;utilisation, non ajouté</translation>
    </message>
    <message>
        <source>文件名无效，未添加</source>
        <translation>Nom de fichier non valide, non ajouté</translation>
    </message>
    <message>
        <source>复制失败，请检查U盘和磁盘空间</source>
        <translation>Échec de la copie, veuillez vérifier la clé USB et l&apos;espace disque</translation>
    </message>
    <message>
        <source>文件损坏，无法打印</source>
        <translation>Fichier endommagé, impression impossible</translation>
    </message>
    <message>
        <source>%1个文件已添加，%2个有问题：</source>
        <translation>%1 fichiers ajoutés, %2 avec problème&#xa0;:</translation>
    </message>
</context>
<context>
    <name>BackgroundService</name>
    <message>
        <source>设置喷头参数异常，请重启</source>
        <translation>Échec du réglage des paramètres des têtes, veuillez redémarrer</translation>
    </message>
    <message>
        <source>检测到喷头异常(%1)，请尝试断电重启(检查 喷头控制板连接)</source>
        <translation>Défaut de tête détecté (%1), veuillez éteindre puis rallumer la machine (vérifiez le raccordement de la carte de tête)</translation>
    </message>
</context>
<context>
    <name>DebugForm</name>
    <message>
        <source>诊断</source>
        <translation>Diagnostic</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>拉墨站测试</source>
        <translation>Test de la station d&apos;encre</translation>
    </message>
    <message>
        <source>打点</source>
        <translation>Impression de points</translation>
    </message>
    <message>
        <source>Z轴测试</source>
        <translation>Test de l&apos;axe Z</translation>
    </message>
    <message>
        <source>循环挤蜡</source>
        <translation>Purge de cire répétée</translation>
    </message>
    <message>
        <source>喷头归一化值</source>
        <translation>Valeurs de norme des têtes</translation>
    </message>
    <message>
        <source>喷头</source>
        <translation>Tête</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>Matériau</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Cire de support</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Cire de structure</translation>
    </message>
    <message>
        <source>偏移量</source>
        <translation>Décalage</translation>
    </message>
    <message>
        <source>生成修改值</source>
        <translation>Créer modifiées</translation>
    </message>
    <message>
        <source>写入原始值</source>
        <translation>Écrire d&apos;origine</translation>
    </message>
    <message>
        <source>写入修改值</source>
        <translation>Écrire modifiées</translation>
    </message>
    <message>
        <source>请稍后，准备中...</source>
        <translation>Veuillez patienter, préparation...</translation>
    </message>
    <message>
        <source>墨站是否正确放置，运动范围内是否清洁</source>
        <translation>La station d&apos;encre est-elle bien en place et sa zone de mouvement est-elle propre&#xa0;?</translation>
    </message>
    <message>
        <source>X轴错误(%1)</source>
        <translation>Erreur de l&apos;axe X (%1)</translation>
    </message>
    <message>
        <source>关闭弹窗后完成测试</source>
        <translation>Le test se termine à la fermeture de cette fenêtre</translation>
    </message>
    <message>
        <source>请稍后，测试即将完成</source>
        <translation>Veuillez patienter, le test se termine</translation>
    </message>
    <message>
        <source>测试完成(%1)</source>
        <translation>Test terminé (%1)</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Veuillez choisir un fichier à imprimer</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>Le plateau n&apos;est pas en place</translation>
    </message>
    <message>
        <source>是否运动测试？</source>
        <translation>Lancer le test de mouvement&#xa0;?</translation>
    </message>
    <message>
        <source>测试时注意人工观察是否异常，Z轴即将回零进行0~145000往复运动？</source>
        <translation>Surveillez toute anomalie pendant le test. L&apos;axe Z va revenir à zéro puis se déplacer entre 0 et 145000. Continuer&#xa0;?</translation>
    </message>
    <message>
        <source>请稍后，运动测试即将完成</source>
        <translation>Veuillez patienter, le test de mouvement se termine</translation>
    </message>
    <message>
        <source>测试完成，请拷贝日志查看测试次数</source>
        <translation>Test terminé. Copiez les journaux pour voir le nombre de cycles</translation>
    </message>
    <message>
        <source>机器处于非空闲状态(打印/暂停)，无法进行此流程</source>
        <translation>La machine n&apos;est pas au repos (impression/pause), cette opération est impossible</translation>
    </message>
    <message>
        <source>请确认喷头下方没有异物，否则将损坏喷头，Z轴即将上下运动？</source>
        <translation>Vérifiez que rien ne se trouve sous les têtes, sinon elles seront endommagées. L&apos;axe Z va monter et descendre. Continuer&#xa0;?</translation>
    </message>
    <message>
        <source>Z 轴运动中，请注意观察</source>
        <translation>L&apos;axe Z est en mouvement, veuillez surveiller</translation>
    </message>
    <message>
        <source>喷头下方是否放置容器，即将开始挤蜡？</source>
        <translation>Un récipient est-il placé sous les têtes&#xa0;? La purge va commencer</translation>
    </message>
    <message>
        <source>是否取消挤蜡？</source>
        <translation>Annuler la purge&#xa0;?</translation>
    </message>
    <message>
        <source>请稍后，挤蜡即将完成</source>
        <translation>Veuillez patienter, la purge se termine</translation>
    </message>
    <message>
        <source>挤蜡完成</source>
        <translation>Purge terminée</translation>
    </message>
    <message>
        <source>打印时不能读写归一化值</source>
        <translation>Les valeurs de norme ne peuvent être ni lues ni écrites pendant l&apos;impression</translation>
    </message>
    <message>
        <source>归一化值读写失败(%1)，请查看日志</source>
        <translation>Échec de lecture ou d&apos;écriture des valeurs de norme (%1), veuillez consulter le journal</translation>
    </message>
    <message>
        <source>归一化值读写完成</source>
        <translation>Valeurs de norme lues et écrites</translation>
    </message>
    <message>
        <source>将喷头%1 %2的归一化值加上偏移量，存为修改值？</source>
        <translation>Ajouter le décalage aux valeurs de norme de la tête %1 %2 et les garder comme valeurs modifiées&#xa0;?</translation>
    </message>
    <message>
        <source>将原始归一化值写入喷头%1 %2？</source>
        <translation>Écrire les valeurs de norme d&apos;origine dans la tête %1 %2&#xa0;?</translation>
    </message>
    <message>
        <source>将修改后的归一化值写入喷头%1 %2？</source>
        <translation>Écrire les valeurs de norme modifiées dans la tête %1 %2&#xa0;?</translation>
    </message>
</context>
<context>
    <name>EmailForm</name>
    <message>
        <source>电子邮箱通知</source>
        <translation>Notifications par e-mail</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>邮件服务器</source>
        <translation>Serveur de messagerie</translation>
    </message>
    <message>
        <source>发件人</source>
        <translation>Expéditeur</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Mot de passe</translation>
    </message>
    <message>
        <source>使用SSL/TLS加密</source>
        <translation>Chiffrement SSL/TLS</translation>
    </message>
    <message>
        <source>收件人</source>
        <translation>Destinataires</translation>
    </message>
    <message>
        <source>蜡材容量</source>
        <translation>Quantité de cire</translation>
    </message>
    <message>
        <source>打印开始/停止</source>
        <translation>Début/arrêt d&apos;impression</translation>
    </message>
    <message>
        <source>设备异常</source>
        <translation>Défauts machine</translation>
    </message>
    <message>
        <source>设备维护</source>
        <translation>Entretien</translation>
    </message>
    <message>
        <source>重置</source>
        <translation>Réinitialiser</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>Appliquer</translation>
    </message>
    <message>
        <source>正在发送测试邮件，请稍候</source>
        <translation>Envoi d&apos;un e-mail de test, veuillez patienter</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Enregistré</translation>
    </message>
</context>
<context>
    <name>EventHandler</name>
    <message>
        <source>该事件未发生</source>
        <translation>Cet événement ne s&apos;est pas produit</translation>
    </message>
    <message>
        <source>首次发生时间: </source>
        <translation>Première fois&#xa0;: </translation>
    </message>
    <message>
        <source>发生次数: %1</source>
        <translation>Nombre&#xa0;: %1</translation>
    </message>
    <message>
        <source>事件: %1</source>
        <translation>Événement&#xa0;: %1</translation>
    </message>
    <message>
        <source> (当前值%1&gt;设定值%2) </source>
        <translation> (valeur %1 &gt; consigne %2) </translation>
    </message>
    <message>
        <source> (当前值%1&lt;设定值%2) </source>
        <translation> (valeur %1 &lt; consigne %2) </translation>
    </message>
    <message>
        <source>success</source>
        <translation>réussi</translation>
    </message>
    <message>
        <source>喷头%1液位异常，请断电重启</source>
        <translation>Niveau d&apos;encre de la tête %1 anormal, veuillez éteindre puis rallumer la machine</translation>
    </message>
    <message>
        <source>CAN 异常-%1 </source>
        <translation>Défaut CAN - %1 </translation>
    </message>
    <message>
        <source>更新第%1个墨瓶</source>
        <translation>Bouteille %1 remplacée</translation>
    </message>
    <message>
        <source>墨瓶%1放错位置</source>
        <translation>La bouteille %1 est au mauvais emplacement</translation>
    </message>
    <message>
        <source>卡片读取失败%1</source>
        <translation>Lecture de la carte %1 impossible</translation>
    </message>
    <message>
        <source>卡片写入失败%1</source>
        <translation>Écriture de la carte %1 impossible</translation>
    </message>
    <message>
        <source>整平棍异常 当前转速%1</source>
        <translation>Défaut du rouleau de nivellement, vitesse actuelle %1</translation>
    </message>
    <message>
        <source>请关闭墨箱门，否则无法供墨</source>
        <translation>Veuillez fermer la porte du bac à encre, sinon la cire ne peut pas être alimentée</translation>
    </message>
    <message>
        <source>墨栈光电状态异常</source>
        <translation>Capteur optique de la station d&apos;encre anormal</translation>
    </message>
    <message>
        <source>气压恢复中(%1,%2,%3)</source>
        <translation>Rétablissement de la pression d&apos;air (%1,%2,%3)</translation>
    </message>
    <message>
        <source>此模型(%1)不适用于当前机器(%2),是否继续打印</source>
        <translation>Ce modèle (%1) ne convient pas à cette machine (%2). Imprimer quand même&#xa0;?</translation>
    </message>
    <message>
        <source>请稍后，加热中(保温-&gt;打印)</source>
        <translation>Veuillez patienter, chauffage (maintien au chaud -&gt; impression)</translation>
    </message>
    <message>
        <source>整平棍转速异常</source>
        <translation>Vitesse du rouleau de nivellement anormale</translation>
    </message>
    <message>
        <source>停止打印</source>
        <translation>Impression arrêtée</translation>
    </message>
    <message>
        <source>打印超时</source>
        <translation>Délai d&apos;impression dépassé</translation>
    </message>
    <message>
        <source>COM%1串口打开失败，请重启</source>
        <translation>Ouverture du port série COM%1 impossible, veuillez redémarrer</translation>
    </message>
    <message>
        <source>配置文件丢失</source>
        <translation>Fichier de configuration perdu</translation>
    </message>
    <message>
        <source>打印完成</source>
        <translation>Impression terminée</translation>
    </message>
    <message>
        <source>打印失败</source>
        <translation>Échec de l&apos;impression</translation>
    </message>
    <message>
        <source>结构墨瓶空</source>
        <translation>Bouteille structure vide</translation>
    </message>
    <message>
        <source>支撑墨瓶空</source>
        <translation>Bouteille support vide</translation>
    </message>
    <message>
        <source>未检测到升级文件</source>
        <translation>Aucun fichier de mise à jour trouvé</translation>
    </message>
    <message>
        <source>X 轴停止运动超时</source>
        <translation>L&apos;axe X ne s&apos;est pas arrêté à temps</translation>
    </message>
    <message>
        <source>Y 轴停止运动超时</source>
        <translation>L&apos;axe Y ne s&apos;est pas arrêté à temps</translation>
    </message>
    <message>
        <source>Z 轴停止运动超时</source>
        <translation>L&apos;axe Z ne s&apos;est pas arrêté à temps</translation>
    </message>
    <message>
        <source>支撑墨管温度1</source>
        <translation>Temp. tube support 1</translation>
    </message>
    <message>
        <source>支撑墨管温度2</source>
        <translation>Temp. tube support 2</translation>
    </message>
    <message>
        <source>支撑墨管温度3</source>
        <translation>Temp. tube support 3</translation>
    </message>
    <message>
        <source>结构墨管温度1</source>
        <translation>Temp. tube structure 1</translation>
    </message>
    <message>
        <source>结构墨管温度2</source>
        <translation>Temp. tube structure 2</translation>
    </message>
    <message>
        <source>结构墨管温度3</source>
        <translation>Temp. tube structure 3</translation>
    </message>
    <message>
        <source>结构阀岛温度1</source>
        <translation>Temp. îlot vannes struct. 1</translation>
    </message>
    <message>
        <source>结构阀岛温度2</source>
        <translation>Temp. îlot vannes struct. 2</translation>
    </message>
    <message>
        <source>结构料桶温度1</source>
        <translation>Temp. réservoir struct. 1</translation>
    </message>
    <message>
        <source>结构料桶温度2</source>
        <translation>Temp. réservoir struct. 2</translation>
    </message>
    <message>
        <source>结构墨管输出控制阀温度</source>
        <translation>Temp. vanne sortie struct.</translation>
    </message>
    <message>
        <source>支撑阀岛温度1</source>
        <translation>Temp. îlot vannes support 1</translation>
    </message>
    <message>
        <source>支撑阀岛温度2</source>
        <translation>Temp. îlot vannes support 2</translation>
    </message>
    <message>
        <source>支撑料桶温度1</source>
        <translation>Temp. réservoir support 1</translation>
    </message>
    <message>
        <source>支撑料桶温度2</source>
        <translation>Temp. réservoir support 2</translation>
    </message>
    <message>
        <source>支撑墨管输出控制阀温度</source>
        <translation>Temp. vanne sortie support</translation>
    </message>
    <message>
        <source>喷头黄铜温度1</source>
        <translation>Temp. laiton tête 1</translation>
    </message>
    <message>
        <source>喷头黄铜温度2</source>
        <translation>Temp. laiton tête 2</translation>
    </message>
    <message>
        <source>喷头黄铜温度3</source>
        <translation>Temp. laiton tête 3</translation>
    </message>
    <message>
        <source>整平辊温度</source>
        <translation>Temp. rouleau nivel.</translation>
    </message>
    <message>
        <source>整平刮刀温度</source>
        <translation>Temp. racle nivel.</translation>
    </message>
    <message>
        <source>整平腔废墨出口温度</source>
        <translation>Temp. sortie déchets nivel.</translation>
    </message>
    <message>
        <source>废墨管温度</source>
        <translation>Temp. tube de déchets</translation>
    </message>
    <message>
        <source>喷头温度1</source>
        <translation>Temp. tête 1</translation>
    </message>
    <message>
        <source>喷头温度2</source>
        <translation>Temp. tête 2</translation>
    </message>
    <message>
        <source>喷头温度3</source>
        <translation>Temp. tête 3</translation>
    </message>
    <message>
        <source>结构阀岛供墨失败</source>
        <translation>Échec d&apos;alimentation de l&apos;îlot de vannes structure</translation>
    </message>
    <message>
        <source>支撑阀岛供墨失败</source>
        <translation>Échec d&apos;alimentation de l&apos;îlot de vannes support</translation>
    </message>
    <message>
        <source>喷头供墨异常</source>
        <translation>Alimentation en encre des têtes anormale</translation>
    </message>
    <message>
        <source>日常维护项目已过期,请打开维护页面查询!</source>
        <translation>Un entretien est en retard, veuillez ouvrir la page d&apos;entretien&#xa0;!</translation>
    </message>
</context>
<context>
    <name>FileForm</name>
    <message>
        <source>打印队列</source>
        <translation>File d&apos;impression</translation>
    </message>
    <message>
        <source>等待打印</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>已完成</source>
        <translation>Terminés</translation>
    </message>
    <message>
        <source>已中止</source>
        <translation>Abandonnés</translation>
    </message>
    <message>
        <source>重打</source>
        <translation>Réimprimer</translation>
    </message>
    <message>
        <source>U盘添加</source>
        <translation>Depuis USB</translation>
    </message>
    <message>
        <source>文件拷贝中</source>
        <translation>Copie du fichier</translation>
    </message>
    <message>
        <source>从 %1 到 %2</source>
        <translation>De %1 vers %2</translation>
    </message>
</context>
<context>
    <name>FirmwareUpdate</name>
    <message>
        <source>准备升级，请稍后</source>
        <translation>Préparation de la mise à jour, veuillez patienter</translation>
    </message>
    <message>
        <source>模式切换错误，升级失败(%1!=%2)</source>
        <translation>Erreur de changement de mode, échec de la mise à jour (%1!=%2)</translation>
    </message>
    <message>
        <source>升级模式切换错误，升级失败,请断电重启(%1 != %2)</source>
        <translation>Erreur de passage en mode de mise à jour, échec de la mise à jour, veuillez éteindre puis rallumer la machine (%1 != %2)</translation>
    </message>
    <message>
        <source>数据发送错误，升级失败重启后将重新升级</source>
        <translation>Erreur d&apos;envoi de données, échec de la mise à jour&#xa0;; elle reprendra après un redémarrage</translation>
    </message>
    <message>
        <source>%1#电路板升级中</source>
        <translation>Mise à jour de la carte %1</translation>
    </message>
    <message>
        <source>所有电路升级完成,请断电重启</source>
        <translation>Toutes les cartes sont à jour, veuillez éteindre puis rallumer la machine</translation>
    </message>
</context>
<context>
    <name>HomeForm</name>
    <message>
        <source>预热中... ...</source>
        <translation>Préchauffage ...</translation>
    </message>
    <message>
        <source>进       度</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Veuillez choisir un fichier à imprimer</translation>
    </message>
    <message>
        <source>剩余时间</source>
        <translation>Temps restant</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Cire de structure</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Cire de support</translation>
    </message>
    <message>
        <source>开始打印时间</source>
        <translation>Début de l&apos;impression</translation>
    </message>
    <message>
        <source>预计完成时间</source>
        <translation>Fin prévue</translation>
    </message>
    <message>
        <source>中止</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>前门</source>
        <translation>Porte avant</translation>
    </message>
    <message>
        <source>请移动到 非系统磁盘</source>
        <translation>Veuillez déplacer le programme vers un disque autre que le disque système</translation>
    </message>
    <message>
        <source>磁盘空间不足，总共: %1GB,已用: %2 GB 请及时清理模型</source>
        <translation>Espace disque insuffisant. Total&#xa0;: %1 Go, utilisé&#xa0;: %2 Go. Veuillez supprimer des modèles sans tarder</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>继续</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>Lancer l&apos;impression</translation>
    </message>
    <message>
        <source>平台未放好</source>
        <translation>Le plateau n&apos;est pas en place</translation>
    </message>
    <message>
        <source>平台是否为空?</source>
        <translation>Le plateau est-il vide&#xa0;?</translation>
    </message>
    <message>
        <source>清空废料箱</source>
        <translation>Videz le bac à déchets</translation>
    </message>
    <message>
        <source>是否中止打印</source>
        <translation>Abandonner l&apos;impression&#xa0;?</translation>
    </message>
    <message>
        <source>打印中... ...</source>
        <translation>Impression ...</translation>
    </message>
    <message>
        <source>保温中... ...</source>
        <translation>Maintien au chaud ...</translation>
    </message>
    <message>
        <source>模型文件损坏</source>
        <translation>Fichier de modèle endommagé</translation>
    </message>
</context>
<context>
    <name>JobNeeds</name>
    <message>
        <source>等待任务需要</source>
        <translation>Besoin des tâches en attente</translation>
    </message>
    <message>
        <source>缺 %1 g</source>
        <translation>manque %1 g</translation>
    </message>
    <message>
        <source>%1 个未知</source>
        <translation>%1 inconnus</translation>
    </message>
    <message>
        <source>够</source>
        <translation>suffisant</translation>
    </message>
</context>
<context>
    <name>LayerPicture</name>
    <message>
        <source>第 %1 层</source>
        <translation>Couche %1</translation>
    </message>
</context>
<context>
    <name>MachineForm</name>
    <message>
        <source>打印机信息</source>
        <translation>Informations imprimante</translation>
    </message>
    <message>
        <source>打印机型号</source>
        <translation>Modèle d&apos;imprimante</translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation>Version du micrologiciel</translation>
    </message>
    <message>
        <source>固件更新时间</source>
        <translation>Date du micrologiciel</translation>
    </message>
    <message>
        <source>设备序列号</source>
        <translation>Numéro de série</translation>
    </message>
    <message>
        <source>MAC地址</source>
        <translation>Adresse MAC</translation>
    </message>
    <message>
        <source>Hib版本</source>
        <translation>Version Hib</translation>
    </message>
    <message>
        <source>切片版本</source>
        <translation>Version du trancheur</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>产品型号：</source>
        <translation>Modèle&#xa0;: </translation>
    </message>
    <message>
        <source>主页</source>
        <translation>Accueil</translation>
    </message>
    <message>
        <source>队列</source>
        <translation>File</translation>
    </message>
    <message>
        <source>材料</source>
        <translation>Matériau</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Outils</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Température</translation>
    </message>
    <message>
        <source>供墨</source>
        <translation>Alimentation en encre</translation>
    </message>
</context>
<context>
    <name>MaintainForm</name>
    <message>
        <source>操作人员维护</source>
        <translation>Entretien opérateur</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>清洁顶部风扇过滤棉</source>
        <translation>Nettoyer le filtre du ventilateur supérieur</translation>
    </message>
    <message>
        <source>清洁初效过滤器</source>
        <translation>Nettoyer le préfiltre</translation>
    </message>
    <message>
        <source>清洁外表面</source>
        <translation>Nettoyer les surfaces extérieures</translation>
    </message>
    <message>
        <source>清洁喷车底板非喷头安装区域</source>
        <translation>Nettoyer la base du chariot hors zone des têtes</translation>
    </message>
    <message>
        <source>清洁Y梁底面</source>
        <translation>Nettoyer le dessous de la poutre Y</translation>
    </message>
    <message>
        <source>滚筒吸粉管道除粉</source>
        <translation>Dépoussiérer le conduit d&apos;aspiration du rouleau</translation>
    </message>
    <message>
        <source>清洁墨站刮刀</source>
        <translation>Nettoyer la racle de la station d&apos;encre</translation>
    </message>
    <message>
        <source>清洁整平棍及整平棍刮刀表面</source>
        <translation>Nettoyer le rouleau de nivellement et sa racle</translation>
    </message>
    <message>
        <source>更换初效过滤器</source>
        <translation>Remplacer le préfiltre</translation>
    </message>
    <message>
        <source>X轴导轨上油</source>
        <translation>Huiler le rail X</translation>
    </message>
    <message>
        <source>Y轴导轨和电机丝杆上油</source>
        <translation>Huiler le rail Y et la vis du moteur</translation>
    </message>
    <message>
        <source>Z轴导轨和电机丝杆上油</source>
        <translation>Huiler le rail Z et la vis du moteur</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>到期</source>
        <translation>À faire</translation>
    </message>
    <message>
        <source>超期</source>
        <translation>En retard</translation>
    </message>
    <message>
        <source>维护项目</source>
        <translation>Opération d&apos;entretien</translation>
    </message>
    <message>
        <source>剩余</source>
        <translation>Reste</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>État</translation>
    </message>
    <message>
        <source>当前维护循环</source>
        <translation>du cycle en cours</translation>
    </message>
    <message>
        <source>维护是否完成?</source>
        <translation>L&apos;entretien est-il effectué&#xa0;?</translation>
    </message>
</context>
<context>
    <name>MaterialForm</name>
    <message>
        <source>材料</source>
        <translation>Matériau</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Cire de support</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Cire de structure</translation>
    </message>
    <message>
        <source>墨瓶 1</source>
        <translation>Bouteille 1</translation>
    </message>
    <message>
        <source>墨瓶 2</source>
        <translation>Bouteille 2</translation>
    </message>
    <message>
        <source>墨瓶 3</source>
        <translation>Bouteille 3</translation>
    </message>
    <message>
        <source>墨瓶 4</source>
        <translation>Bouteille 4</translation>
    </message>
    <message>
        <source>触摸墨瓶查看详情</source>
        <translation>Touchez une bouteille pour voir ses détails</translation>
    </message>
    <message>
        <source>缺失</source>
        <translation>Absente</translation>
    </message>
    <message>
        <source>使用中</source>
        <translation>Utilisée</translation>
    </message>
    <message>
        <source>已安装</source>
        <translation>Installée</translation>
    </message>
    <message>
        <source>未安装</source>
        <translation>Non installée</translation>
    </message>
    <message>
        <source>剩余重量</source>
        <translation>Poids restant</translation>
    </message>
    <message>
        <source>剩余比例</source>
        <translation>Reste en pour cent</translation>
    </message>
    <message>
        <source>批号</source>
        <translation>Lot</translation>
    </message>
    <message>
        <source>过期日期</source>
        <translation>Date d&apos;expiration</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>Modèle</translation>
    </message>
    <message>
        <source>材料状态</source>
        <translation>État du matériau</translation>
    </message>
    <message>
        <source>激活</source>
        <translation>Activer</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Fermer</translation>
    </message>
</context>
<context>
    <name>MsgForm</name>
    <message>
        <source>否</source>
        <translation>Non</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Avertissement</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Erreur</translation>
    </message>
</context>
<context>
    <name>NetForm</name>
    <message>
        <source>网络配置</source>
        <translation>Configuration réseau</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>自动获取地址 (DHCP)</source>
        <translation>Adresse automatique (DHCP)</translation>
    </message>
    <message>
        <source>IP地址</source>
        <translation>Adresse IP</translation>
    </message>
    <message>
        <source>子网掩码</source>
        <translation>Masque de sous-réseau</translation>
    </message>
    <message>
        <source>默认网关</source>
        <translation>Passerelle par défaut</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>IP地址无效，请检查</source>
        <translation>L&apos;adresse IP n&apos;est pas valide, veuillez la vérifier</translation>
    </message>
    <message>
        <source>子网掩码无效，请检查</source>
        <translation>Le masque de sous-réseau n&apos;est pas valide, veuillez le vérifier</translation>
    </message>
    <message>
        <source>默认网关无效或与IP地址不在同一网段，请检查</source>
        <translation>La passerelle par défaut n&apos;est pas valide ou n&apos;est pas dans le sous-réseau de l&apos;adresse IP, veuillez la vérifier</translation>
    </message>
    <message>
        <source>网卡未正常工作请检查网线是否正常连接，人工排查问题</source>
        <translation>La carte réseau ne fonctionne pas. Veuillez vérifier le branchement du câble et rechercher le problème manuellement</translation>
    </message>
    <message>
        <source>配置已取消</source>
        <translation>Configuration annulée</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Enregistré</translation>
    </message>
</context>
<context>
    <name>PrintInfoForm</name>
    <message>
        <source>模型详情</source>
        <translation>Détails du modèle</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>请选择打印文件</source>
        <translation>Veuillez choisir un fichier à imprimer</translation>
    </message>
    <message>
        <source>模型名称</source>
        <translation>Nom du modèle</translation>
    </message>
    <message>
        <source>打印时间</source>
        <translation>Durée d&apos;impression</translation>
    </message>
    <message>
        <source>结构材料</source>
        <translation>Cire de structure</translation>
    </message>
    <message>
        <source>支撑材料</source>
        <translation>Cire de support</translation>
    </message>
    <message>
        <source>打印机模式</source>
        <translation>Mode d&apos;impression</translation>
    </message>
    <message>
        <source>估算层数</source>
        <translation>Couches estimées</translation>
    </message>
    <message>
        <source>体积</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>开始打印</source>
        <translation>Lancer l&apos;impression</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除</source>
        <translation>Fichier de modèle endommagé ou supprimé</translation>
    </message>
    <message>
        <source>没有预览图</source>
        <translation>Pas d&apos;aperçu</translation>
    </message>
    <message>
        <source>模型文件损坏或已删除，请重新添加</source>
        <translation>Fichier de modèle endommagé ou supprimé, veuillez l&apos;ajouter de nouveau</translation>
    </message>
</context>
<context>
    <name>PrintService</name>
    <message>
        <source> 切片中请稍后 %1.%2..(%3)</source>
        <translation> Découpe en couches, veuillez patienter %1.%2..(%3)</translation>
    </message>
    <message>
        <source>打印开始</source>
        <translation>Impression commencée</translation>
    </message>
</context>
<context>
    <name>SetupForm</name>
    <message>
        <source>设置</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>网络</source>
        <translation>Réseau</translation>
    </message>
    <message>
        <source>电子邮箱</source>
        <translation>E-mail</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>中文</source>
        <translation>Chinois</translation>
    </message>
    <message>
        <source>英语</source>
        <translation>Anglais</translation>
    </message>
    <message>
        <source>土耳其语</source>
        <translation>Turc</translation>
    </message>
    <message>
        <source>法语</source>
        <translation>Français</translation>
    </message>
    <message>
        <source>韩语</source>
        <translation>Coréen</translation>
    </message>
    <message>
        <source>资源文件拷贝失败</source>
        <translation>Échec de la copie du fichier de ressources</translation>
    </message>
    <message>
        <source>即将重启?</source>
        <translation>Redémarrer maintenant&#xa0;?</translation>
    </message>
</context>
<context>
    <name>StartCheck</name>
    <message>
        <source>更新完成请核对一下版本号，当前版本为</source>
        <translation>Mise à jour terminée, veuillez vérifier le numéro de version. Version actuelle</translation>
    </message>
    <message>
        <source>请确保切片软件版本大于V1.3.2</source>
        <translation>Veuillez vous assurer que la version du trancheur est supérieure à V1.3.2</translation>
    </message>
</context>
<context>
    <name>ToolForm</name>
    <message>
        <source>工具</source>
        <translation>Outils</translation>
    </message>
    <message>
        <source>打印机信息</source>
        <translation>Informations imprimante</translation>
    </message>
    <message>
        <source>客户使用情况</source>
        <translation>Utilisation</translation>
    </message>
    <message>
        <source>诊断</source>
        <translation>Diagnostic</translation>
    </message>
    <message>
        <source>操作人员维护</source>
        <translation>Entretien opérateur</translation>
    </message>
    <message>
        <source>保存日志</source>
        <translation>Enregistrer les journaux</translation>
    </message>
    <message>
        <source>U盘更新</source>
        <translation>Mise à jour USB</translation>
    </message>
    <message>
        <source>电源选项</source>
        <translation>Alimentation</translation>
    </message>
    <message>
        <source>曲线</source>
        <translation>Courbes</translation>
    </message>
    <message>
        <source>插入U盘后可以保存日志和更新</source>
        <translation>Insérez une clé USB pour enregistrer les journaux ou mettre à jour</translation>
    </message>
    <message>
        <source>日志没有全部保存</source>
        <translation>Tous les journaux n&apos;ont pas pu être enregistrés</translation>
    </message>
    <message>
        <source>已保存 %1 个日志文件</source>
        <translation>%1 fichiers journaux enregistrés</translation>
    </message>
    <message>
        <source>是否立即重启完成升级?</source>
        <translation>Redémarrer maintenant pour terminer la mise à jour&#xa0;?</translation>
    </message>
    <message>
        <source>是否关机，请确认，如果进入关机流程，只能断电重启</source>
        <translation>Arrêter la machine&#xa0;? Veuillez confirmer&#xa0;: une fois l&apos;arrêt commencé, la machine ne redémarre qu&apos;après coupure de l&apos;alimentation</translation>
    </message>
    <message>
        <source>请关闭电源</source>
        <translation>Veuillez couper l&apos;alimentation</translation>
    </message>
    <message>
        <source>关机中,请稍后...</source>
        <translation>Arrêt en cours, veuillez patienter...</translation>
    </message>
</context>
<context>
    <name>TrendForm</name>
    <message>
        <source>曲线</source>
        <translation>Courbes</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
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
        <translation>Têtes</translation>
    </message>
    <message>
        <source>整平</source>
        <translation>Nivellement</translation>
    </message>
    <message>
        <source>气压</source>
        <translation>Air</translation>
    </message>
    <message>
        <source>液位</source>
        <translation>Niveaux</translation>
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
        <translation>Niveau support tête %1</translation>
    </message>
    <message>
        <source>喷头%1结构液位</source>
        <translation>Niveau structure tête %1</translation>
    </message>
    <message>
        <source>触摸曲线查看该时刻的数值和事件</source>
        <translation>Touchez les courbes pour voir les valeurs et événements à cet instant</translation>
    </message>
</context>
<context>
    <name>TrendPlot</name>
    <message>
        <source>没有数据</source>
        <translation>Aucune donnée</translation>
    </message>
</context>
<context>
    <name>UserInfoForm</name>
    <message>
        <source>客户使用情况</source>
        <translation>Utilisation</translation>
    </message>
    <message>
        <source>打印机总时间</source>
        <translation>Temps total de l&apos;imprimante</translation>
    </message>
    <message>
        <source>打印总时间</source>
        <translation>Temps total d&apos;impression</translation>
    </message>
    <message>
        <source>连续运行时间</source>
        <translation>Durée de marche continue</translation>
    </message>
    <message>
        <source>使用总结构材料</source>
        <translation>Cire de structure utilisée</translation>
    </message>
    <message>
        <source>使用总支撑材料</source>
        <translation>Cire de support utilisée</translation>
    </message>
    <message>
        <source>图层已打印</source>
        <translation>Couches imprimées</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
</context>
<context>
    <name>WarningForm</name>
    <message>
        <source>警告</source>
        <translation>Avertissements</translation>
    </message>
    <message>
        <source>当前没有警告</source>
        <translation>Aucun avertissement</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>错误代码</source>
        <translation>Code d&apos;erreur</translation>
    </message>
    <message>
        <source>事件内容</source>
        <translation>Événement</translation>
    </message>
</context>
</TS>
