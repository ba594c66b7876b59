<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>AnimationBox</name>
    <message>
        <source>&amp;Fetch the animation</source>
        <translation>获取动画(&amp;F)</translation>
    </message>
    <message>
        <source>%1 is a film, which is not played here.</source>
        <translation>%1 是视频，此处不播放。</translation>
    </message>
    <message>
        <source>%1 is not on the disk.</source>
        <translation>%1 不在磁盘上。</translation>
    </message>
    <message>
        <source>%1, %2 frames</source>
        <translation>%1，%2 帧</translation>
    </message>
    <message>
        <source>Show the &amp;film</source>
        <translation>播放影片(&amp;F)</translation>
    </message>
    <message>
        <source>Nothing on this machine opens %1</source>
        <translation>本机没有程序能打开 %1</translation>
    </message>
    <message>
        <source>In the browser or player of this machine</source>
        <translation>用本机的浏览器或播放器打开</translation>
    </message>
</context>
<context>
    <name>Animations</name>
    <message>
        <source>%1 cannot be made</source>
        <translation>无法创建 %1</translation>
    </message>
    <message>
        <source>%1 lists no frame that can be read</source>
        <translation>%1 中没有可读取的帧</translation>
    </message>
</context>
<context>
    <name>BubbleDelegate</name>
    <message>
        <source>“%1” is no width of borders</source>
        <translation>“%1”不是有效的边框宽度</translation>
    </message>
    <message>
        <source>“%1” is no padding</source>
        <translation>“%1”不是有效的内边距</translation>
    </message>
    <message>
        <source>%1 %2, type %3</source>
        <translation>%1 %2，类型 %3</translation>
    </message>
    <message>
        <source>borders %1, padding %2</source>
        <translation>边框 %1，内边距 %2</translation>
    </message>
    <message>
        <source>in the chat</source>
        <translation>聊天中</translation>
    </message>
    <message>
        <source>as a background</source>
        <translation>作为背景</translation>
    </message>
</context>
<context>
    <name>CacheEntries</name>
    <message>
        <source>name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>tidying</source>
        <translation>清理</translation>
    </message>
    <message>
        <source>why</source>
        <translation>原因</translation>
    </message>
    <message>
        <source>files</source>
        <translation>文件数</translation>
    </message>
    <message>
        <source>modified</source>
        <translation>修改时间</translation>
    </message>
</context>
<context>
    <name>CachePage</name>
    <message>
        <source>%1 in a file</source>
        <translation>%1，1 个文件</translation>
    </message>
    <message>
        <source>%1 in %2 files</source>
        <translation>%1，%2 个文件</translation>
    </message>
    <message>
        <source>U&amp;p</source>
        <translation>上一级(&amp;P)</translation>
    </message>
    <message>
        <source>There is no %1 in the cache</source>
        <translation>缓存中没有 %1</translation>
    </message>
    <message>
        <source>&amp;Tidy</source>
        <translation>清理(&amp;T)</translation>
    </message>
    <message>
        <source>Remove what is to go</source>
        <translation>删除待删除的文件</translation>
    </message>
    <message>
        <source>stays</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>goes</source>
        <translation>待删除</translation>
    </message>
    <message>
        <source>never tidied</source>
        <translation>从不清理</translation>
    </message>
    <message>
        <source>The folder that this one is in</source>
        <translation>上一级文件夹</translation>
    </message>
    <message>
        <source>What the run tells</source>
        <translation>清理日志</translation>
    </message>
    <message>
        <source>%1. %2.</source>
        <translation>%1。%2。</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>Enter or a double click opens a folder</source>
        <translation>按回车或双击打开文件夹</translation>
    </message>
</context>
<context>
    <name>ChatLines</name>
    <message>
        <source>%1 µs</source>
        <translation>%1 微秒</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 毫秒</translation>
    </message>
    <message>
        <source>line</source>
        <translation>输入</translation>
    </message>
    <message>
        <source>as the room sees it</source>
        <translation>房间里看到的</translation>
    </message>
    <message>
        <source>masks</source>
        <translation>屏蔽</translation>
    </message>
    <message>
        <source>time</source>
        <translation>用时</translation>
    </message>
</context>
<context>
    <name>ChatPage</name>
    <message>
        <source>Type or paste lines of a chat</source>
        <translation>输入或粘贴聊天内容</translation>
    </message>
    <message>
        <source>Bubbles</source>
        <translation>气泡</translation>
    </message>
    <message>
        <source>Stickers</source>
        <translation>表情包</translation>
    </message>
    <message>
        <source>Enter or a double click adds the phrase to the lines above</source>
        <translation>按回车或双击，将该条加入上方内容</translation>
    </message>
    <message>
        <source>Phrases</source>
        <translation>快捷输入</translation>
    </message>
    <message>
        <source>What stands for %1, %2 and so on, &amp;between commas:</source>
        <translation>%1、%2 等的取值，以逗号分隔(&amp;B)：</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>Lines: %1, masked: %2, %3 in all</source>
        <translation>%1 行，屏蔽 %2 行，共用时 %3</translation>
    </message>
    <message>
        <source>; %1 to go</source>
        <translation>；还有 %1 行</translation>
    </message>
</context>
<context>
    <name>ClientHost</name>
    <message>
        <source>Updating</source>
        <translation>正在更新</translation>
    </message>
    <message>
        <source>Fetching</source>
        <translation>正在获取</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>正在加载</translation>
    </message>
    <message>
        <source>Tidying</source>
        <translation>正在清理</translation>
    </message>
    <message>
        <source>the cache is being tidied</source>
        <translation>正在清理缓存</translation>
    </message>
    <message>
        <source>: name one with --server URL</source>
        <translation>：请用 --server URL 指定</translation>
    </message>
</context>
<context>
    <name>CopiedRows</name>
    <message>
        <source>Copy as text</source>
        <translation>复制为文本</translation>
    </message>
    <message>
        <source>Copy as JSON</source>
        <translation>复制为 JSON</translation>
    </message>
</context>
<context>
    <name>DerivedColumn</name>
    <message>
        <source>filled in</source>
        <translation>填入后</translation>
    </message>
    <message>
        <source>in force</source>
        <translation>生效</translation>
    </message>
    <message>
        <source>comes with</source>
        <translation>附带</translation>
    </message>
    <message>
        <source>on the disk</source>
        <translation>磁盘上</translation>
    </message>
    <message>
        <source>changed by the last load</source>
        <translation>最近一次加载的变化</translation>
    </message>
    <message>
        <source>opens</source>
        <translation>打开方式</translation>
    </message>
    <message>
        <source>address</source>
        <translation>地址</translation>
    </message>
</context>
<context>
    <name>EmptyNote</name>
    <message>
        <source>%1 did not load: %2</source>
        <translation>%1 未能加载：%2</translation>
    </message>
    <message>
        <source>Nothing to show: %1 has no such row</source>
        <translation>没有可显示的内容：%1 中没有这样的行</translation>
    </message>
</context>
<context>
    <name>ExplanationView</name>
    <message>
        <source>version %1</source>
        <translation>版本 %1</translation>
    </message>
    <message>
        <source>row %1 of %2</source>
        <translation>%2 第 %1 行</translation>
    </message>
    <message>
        <source>not on the disk; it would be %1</source>
        <translation>不在磁盘上；应位于 %1</translation>
    </message>
    <message>
        <source>Which one is meant?</source>
        <translation>指的是哪一个？</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>以及另外 %1 个</translation>
    </message>
</context>
<context>
    <name>FrameDay</name>
    <message>
        <source>Now</source>
        <translation>现在</translation>
    </message>
    <message>
        <source>Select a frame to see which period is in force.</source>
        <translation>选择头像框，查看当前生效的时段。</translation>
    </message>
</context>
<context>
    <name>Gallery</name>
    <message>
        <source>Select one to see it in full.</source>
        <translation>选择一项查看详情。</translation>
    </message>
</context>
<context>
    <name>GiftTabs</name>
    <message>
        <source>All (%1)</source>
        <translation>全部 (%1)</translation>
    </message>
    <message>
        <source>Tab %1 (%2)</source>
        <translation>页签 %1 (%2)</translation>
    </message>
    <message>
        <source>The gifts of this tab name several icons:</source>
        <translation>此页签的礼物指定了多个图标：</translation>
    </message>
</context>
<context>
    <name>GiftsPage</name>
    <message>
        <source>from %1</source>
        <translation>%1 起</translation>
    </message>
    <message>
        <source>until %1</source>
        <translation>%1 止</translation>
    </message>
    <message>
        <source>not visible</source>
        <translation>不可见</translation>
    </message>
    <message>
        <source>not in the panel</source>
        <translation>不在面板中</translation>
    </message>
    <message>
        <source>All gifts</source>
        <translation>全部礼物</translation>
    </message>
    <message>
        <source>Can be sent</source>
        <translation>可赠送</translation>
    </message>
    <message>
        <source>Cannot be sent</source>
        <translation>不可赠送</translation>
    </message>
    <message>
        <source>%1 of %2 can be sent</source>
        <translation>%2 个中有 %1 个可赠送</translation>
    </message>
    <message>
        <source>Select a gift to see why it can be sent, or cannot.</source>
        <translation>选择礼物，查看可否赠送及原因。</translation>
    </message>
</context>
<context>
    <name>LineMasks</name>
    <message>
        <source>word</source>
        <translation>屏蔽词</translation>
    </message>
    <message>
        <source>list</source>
        <translation>词库</translation>
    </message>
    <message>
        <source>covers</source>
        <translation>覆盖</translation>
    </message>
    <message>
        <source>from</source>
        <translation>起始</translation>
    </message>
    <message>
        <source>row</source>
        <translation>行</translation>
    </message>
    <message>
        <source>Nothing is typed yet.</source>
        <translation>尚未输入内容。</translation>
    </message>
    <message>
        <source>“%1” waits for its turn</source>
        <translation>“%1”等待处理</translation>
    </message>
    <message>
        <source>“%1” is shown as it is</source>
        <translation>“%1”原样显示</translation>
    </message>
    <message>
        <source>“%1” is shown as “%2”</source>
        <translation>“%1”显示为“%2”</translation>
    </message>
    <message>
        <source>older</source>
        <translation>旧</translation>
    </message>
    <message>
        <source>newer</source>
        <translation>新</translation>
    </message>
    <message>
        <source>Enter or a double click shows it in %1</source>
        <translation>按回车或双击，在 %1 中查看</translation>
    </message>
    <message>
        <source>Enter or a double click leads to the word in its table</source>
        <translation>按回车或双击转到词表中的这个词</translation>
    </message>
</context>
<context>
    <name>LogModel</name>
    <message>
        <source>debug</source>
        <translation>调试</translation>
    </message>
    <message>
        <source>info</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>severity</source>
        <translation>级别</translation>
    </message>
    <message>
        <source>part</source>
        <translation>模块</translation>
    </message>
    <message>
        <source>line</source>
        <translation>内容</translation>
    </message>
</context>
<context>
    <name>LogPage</name>
    <message>
        <source>%1 and worse</source>
        <translation>%1及以上</translation>
    </message>
</context>
<context>
    <name>Look</name>
    <message>
        <source>No font of this machine has Chinese characters; on Debian, fonts-wqy-microhei has.</source>
        <translation>本机没有中文字体；Debian 可安装 fonts-wqy-microhei。</translation>
    </message>
</context>
<context>
    <name>LookPage</name>
    <message>
        <source>Fetch what is &amp;missing</source>
        <translation>获取缺失项(&amp;M)</translation>
    </message>
    <message>
        <source>There is no %1 on this page</source>
        <translation>此页没有 %1</translation>
    </message>
    <message>
        <source>&amp;Fetch the pictures anew</source>
        <translation>重新获取图片(&amp;F)</translation>
    </message>
    <message>
        <source>The whole window</source>
        <translation>整个窗口</translation>
    </message>
    <message>
        <source>The top area</source>
        <translation>顶部区域</translation>
    </message>
    <message>
        <source>Skin</source>
        <translation>皮肤</translation>
    </message>
    <message>
        <source>Nobility</source>
        <translation>贵族</translation>
    </message>
    <message>
        <source>Flash animations</source>
        <translation>Flash 动画</translation>
    </message>
    <message>
        <source>Awards of activities</source>
        <translation>活动奖励</translation>
    </message>
    <message>
        <source>Awards</source>
        <translation>奖励特效</translation>
    </message>
    <message>
        <source>Recreation</source>
        <translation>魔法表情</translation>
    </message>
    <message>
        <source>no skin with a version is in force</source>
        <translation>没有带版本的皮肤生效</translation>
    </message>
    <message>
        <source>being fetched</source>
        <translation>正在获取</translation>
    </message>
    <message>
        <source>not on the disk</source>
        <translation>不在磁盘上</translation>
    </message>
    <message>
        <source>%1 x %2 pixels</source>
        <translation>%1 x %2 像素</translation>
    </message>
    <message>
        <source>%1
%2
%3</source>
        <translation>%1
%2
%3</translation>
    </message>
    <message>
        <source>Select a rank to see its privileges.</source>
        <translation>选择爵位，查看其特权。</translation>
    </message>
    <message>
        <source>%1 has %2 of %3 privileges</source>
        <translation>%1拥有 %2 / %3 项特权</translation>
    </message>
    <message>
        <source>%1, and %2</source>
        <translation>%1，%2</translation>
    </message>
    <message>
        <source>Enter or a double click leads to the row in its table</source>
        <translation>按回车或双击转到表中的这一行</translation>
    </message>
    <message>
        <source>yes, as the last</source>
        <translation>是，最后一个</translation>
    </message>
</context>
<context>
    <name>LookTiles</name>
    <message>
        <source>bubbles %1</source>
        <translation>气泡 %1</translation>
    </message>
    <message>
        <source>head frame %1</source>
        <translation>头像框 %1</translation>
    </message>
    <message>
        <source>cars %1...</source>
        <translation>座驾 %1…</translation>
    </message>
    <message>
        <source>car %1</source>
        <translation>座驾 %1</translation>
    </message>
    <message>
        <source>there</source>
        <translation>已有</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>缺失</translation>
    </message>
    <message>
        <source>no such flash</source>
        <translation>没有此动画</translation>
    </message>
    <message>
        <source>game</source>
        <translation>游戏</translation>
    </message>
    <message>
        <source>magic</source>
        <translation>魔法</translation>
    </message>
    <message>
        <source>wish</source>
        <translation>许愿</translation>
    </message>
    <message>
        <source>of no kind</source>
        <translation>类型未知</translation>
    </message>
    <message>
        <source>from %1</source>
        <translation>%1起</translation>
    </message>
    <message>
        <source>not offered</source>
        <translation>未开放</translation>
    </message>
    <message>
        <source>not yet</source>
        <translation>尚未获得</translation>
    </message>
</context>
<context>
    <name>LostRows</name>
    <message>
        <source>row</source>
        <translation>行</translation>
    </message>
    <message>
        <source>id</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>what became of it</source>
        <translation>去向</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>ZGlobal Inspector</source>
        <translation>ZGlobal 检查器</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>前进</translation>
    </message>
</context>
<context>
    <name>OverviewPage</name>
    <message>
        <source>&amp;Update</source>
        <translation>更新(&amp;U)</translation>
    </message>
    <message>
        <source>Ask for the versions, fetch what has changed, load it</source>
        <translation>查询版本，获取并加载有变化的表</translation>
    </message>
    <message>
        <source>Re&amp;load</source>
        <translation>重新加载(&amp;L)</translation>
    </message>
    <message>
        <source>Load the files that are on the disk</source>
        <translation>加载磁盘上的文件</translation>
    </message>
    <message>
        <source>&amp;Tidy</source>
        <translation>清理(&amp;T)</translation>
    </message>
    <message>
        <source>Remove the files that nothing uses; a run goes on to its end</source>
        <translation>删除无用的文件；开始后不能中止</translation>
    </message>
    <message>
        <source>Enter or a double click shows the records; a double click on a version writes another</source>
        <translation>按回车或双击显示记录；双击版本可改写版本</translation>
    </message>
    <message>
        <source>%1 tables, %2 loaded, %3 missing or failed, %4 not read; %5 records</source>
        <translation>%1 张表，已加载 %2，缺失或失败 %3，不读取 %4；共 %5 条记录</translation>
    </message>
</context>
<context>
    <name>PageList</name>
    <message>
        <source>Overview</source>
        <translation>概览</translation>
    </message>
    <message>
        <source>Tables</source>
        <translation>表</translation>
    </message>
    <message>
        <source>Gifts</source>
        <translation>礼物</translation>
    </message>
    <message>
        <source>People</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>Chat</source>
        <translation>聊天</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>页面</translation>
    </message>
    <message>
        <source>Look</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>Cache</source>
        <translation>缓存</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
</context>
<context>
    <name>PagesPage</name>
    <message>
        <source>An address, or a banner by its id or name</source>
        <translation>网址，或 Banner 的 ID 或名称</translation>
    </message>
    <message>
        <source>Left out:</source>
        <translation>未显示：</translation>
    </message>
    <message>
        <source>Banners</source>
        <translation>Banner</translation>
    </message>
    <message>
        <source>embedded</source>
        <translation>内嵌</translation>
    </message>
    <message>
        <source>outside</source>
        <translation>外部</translation>
    </message>
    <message>
        <source>Secondary banners</source>
        <translation>次级 Banner</translation>
    </message>
    <message>
        <source>Web pages</source>
        <translation>网页</translation>
    </message>
    <message>
        <source>CS_BannerConfig, by weight:</source>
        <translation>CS_BannerConfig，按权重：</translation>
    </message>
    <message>
        <source>CS_BannerConfigNew, in table order:</source>
        <translation>CS_BannerConfigNew，按表中顺序：</translation>
    </message>
    <message>
        <source>%1 %2, row %3 of %4: %5</source>
        <translation>%1 %2，%4 第 %3 行：%5</translation>
    </message>
    <message>
        <source>Type or choose an address to see where it opens and by which rule, or a banner to see why it is shown, or is not.</source>
        <translation>输入或选择一个地址，查看它在哪里打开、依据哪条规则；或选择一个 Banner，查看它为何显示或不显示。</translation>
    </message>
</context>
<context>
    <name>PeoplePage</name>
    <message>
        <source>Levels</source>
        <translation>等级</translation>
    </message>
    <message>
        <source>Medals</source>
        <translation>勋章</translation>
    </message>
    <message>
        <source>Head frames</source>
        <translation>头像框</translation>
    </message>
    <message>
        <source>Cars</source>
        <translation>座驾</translation>
    </message>
    <message>
        <source>Stamps</source>
        <translation>盖章</translation>
    </message>
    <message>
        <source>Avatar stamps</source>
        <translation>头像贴</translation>
    </message>
    <message>
        <source>There is no %1</source>
        <translation>没有 %1</translation>
    </message>
</context>
<context>
    <name>RowCells</name>
    <message>
        <source>nobody reads it</source>
        <translation>无人读取</translation>
    </message>
    <message>
        <source>the file has no such column</source>
        <translation>文件中没有此列</translation>
    </message>
    <message>
        <source>no %1: reads as %2</source>
        <translation>不是 %1：读作 %2</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Row %1 of version %2: %3</source>
        <translation>版本 %2 第 %1 行：%3</translation>
    </message>
    <message>
        <source>column</source>
        <translation>列</translation>
    </message>
    <message>
        <source>in the file</source>
        <translation>文件中</translation>
    </message>
    <message>
        <source>in the record</source>
        <translation>记录中</translation>
    </message>
    <message>
        <source>note</source>
        <translation>备注</translation>
    </message>
    <message>
        <source>The file has no such row any more.</source>
        <translation>文件中已没有此行。</translation>
    </message>
</context>
<context>
    <name>SearchBox</name>
    <message>
        <source>Search, or column:text</source>
        <translation>搜索，或 列名:文字</translation>
    </message>
</context>
<context>
    <name>ShownBanners</name>
    <message>
        <source>opens embedded</source>
        <translation>内嵌打开</translation>
    </message>
    <message>
        <source>opens outside</source>
        <translation>外部打开</translation>
    </message>
    <message>
        <source>weight %1, %2</source>
        <translation>权重 %1，%2</translation>
    </message>
    <message>
        <source>%1. %2 (banner %3)</source>
        <translation>%1. %2（Banner %3）</translation>
    </message>
</context>
<context>
    <name>ShownTables</name>
    <message>
        <source>table</source>
        <translation>表</translation>
    </message>
    <message>
        <source>kind</source>
        <translation>种类</translation>
    </message>
    <message>
        <source>version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>age</source>
        <translation>距今</translation>
    </message>
    <message>
        <source>records</source>
        <translation>记录</translation>
    </message>
    <message>
        <source>state</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>read by</source>
        <translation>读取者</translation>
    </message>
    <message>
        <source>loader</source>
        <translation>加载方式</translation>
    </message>
    <message>
        <source>at start</source>
        <translation>启动时</translation>
    </message>
    <message>
        <source>file</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>what is wrong</source>
        <translation>问题</translation>
    </message>
    <message>
        <source>last fault</source>
        <translation>最近故障</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>缺失</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分钟</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 小时</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 天</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>no</source>
        <translation>否</translation>
    </message>
    <message>
        <source>not read</source>
        <translation>不读取</translation>
    </message>
    <message>
        <source>loaded</source>
        <translation>已加载</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>not loaded</source>
        <translation>未加载</translation>
    </message>
    <message>
        <source>%1 is not there</source>
        <translation>%1 不存在</translation>
    </message>
</context>
<context>
    <name>SpaceMap</name>
    <message>
        <source>%1
%2
%3: %4</source>
        <translation>%1
%2
%3：%4</translation>
    </message>
    <message>
        <source>Looking ...</source>
        <translation>正在查看…</translation>
    </message>
    <message>
        <source>There is nothing here.</source>
        <translation>这里没有内容。</translation>
    </message>
</context>
<context>
    <name>StatusStrip</name>
    <message>
        <source>%1 in %2</source>
        <translation>服务器 %1，文件夹 %2</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>停止(&amp;S)</translation>
    </message>
    <message>
        <source>Show all that could not be done</source>
        <translation>显示所有未能完成的事项</translation>
    </message>
    <message>
        <source>End the update; what is not there yet fails as cancelled</source>
        <translation>中止更新；尚未取到的按已取消处理</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>另有 %1 条</translation>
    </message>
    <message>
        <source>more</source>
        <translation>更多</translation>
    </message>
</context>
<context>
    <name>Stickers</name>
    <message>
        <source>%1, version %2
%3</source>
        <translation>%1，版本 %2
%3</translation>
    </message>
    <message>
        <source>group %1</source>
        <translation>第 %1 组</translation>
    </message>
</context>
<context>
    <name>TableChanges</name>
    <message>
        <source>%1 new or changed, %2 gone</source>
        <translation>%1 条新增或改变，%2 条消失</translation>
    </message>
</context>
<context>
    <name>TablesPage</name>
    <message>
        <source>There is no table %1</source>
        <translation>没有表 %1</translation>
    </message>
    <message>
        <source>Rows of the file that became no record: %1</source>
        <translation>文件中未成为记录的行：%1</translation>
    </message>
    <message>
        <source>Select a row to see it as its file has it.</source>
        <translation>选择一行，查看其在文件中的内容。</translation>
    </message>
    <message>
        <source>%1 of %2 rows</source>
        <translation>%1 / %2 行</translation>
    </message>
    <message>
        <source>%1 has no %2</source>
        <translation>%1 中没有 %2</translation>
    </message>
    <message>
        <source>; by the last load: %1</source>
        <translation>；最近一次加载：%1</translation>
    </message>
</context>
<context>
    <name>TidyVerdicts</name>
    <message>
        <source>%1 goes</source>
        <translation>待删除 %1</translation>
    </message>
    <message>
        <source>%1 of %2 removed</source>
        <translation>已删除 %1 / %2</translation>
    </message>
    <message>
        <source>%1 of %2 entries in it</source>
        <translation>其中 %1 / %2 项</translation>
    </message>
    <message>
        <source>stays</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>nothing in it is to go</source>
        <translation>其中没有待删除项</translation>
    </message>
    <message>
        <source>tidying does not look here</source>
        <translation>清理不涉及此处</translation>
    </message>
    <message>
        <source>A run would remove nothing</source>
        <translation>没有可清理的内容</translation>
    </message>
    <message>
        <source>A run would remove %1 of %2 entries, %3</source>
        <translation>清理将删除 %2 项中的 %1 项，%3</translation>
    </message>
    <message>
        <source>Removed: %1 of %2 that were to go, %3</source>
        <translation>已删除 %1 项，应删 %2 项，%3</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>已删除</translation>
    </message>
    <message>
        <source>goes</source>
        <translation>待删除</translation>
    </message>
    <message>
        <source>the flash table names another version</source>
        <translation>动画表中是其他版本</translation>
    </message>
    <message>
        <source>a higher version is there</source>
        <translation>已有更高版本</translation>
    </message>
    <message>
        <source>an archive that has been unpacked</source>
        <translation>已解压的压缩包</translation>
    </message>
    <message>
        <source>left over from a download</source>
        <translation>下载残留</translation>
    </message>
    <message>
        <source>no table&apos;s current file</source>
        <translation>不是任何表的当前文件</translation>
    </message>
    <message>
        <source>no gift plays it</source>
        <translation>没有礼物使用</translation>
    </message>
    <message>
        <source>not in the flash table, but no higher version is there</source>
        <translation>不在动画表中，但没有更高版本</translation>
    </message>
    <message>
        <source>as high a version as the highest</source>
        <translation>与最高版本相同</translation>
    </message>
    <message>
        <source>its name has no version, so nobody can tell what it is</source>
        <translation>文件名不含版本，无法识别</translation>
    </message>
    <message>
        <source>nothing needs it, but it goes no earlier than %1</source>
        <translation>无人使用，但 %1 之前不删除</translation>
    </message>
    <message>
        <source>a download whose age cannot be told</source>
        <translation>无法得知时间的下载</translation>
    </message>
    <message>
        <source>the current file of %1</source>
        <translation>%1 的当前文件</translation>
    </message>
    <message>
        <source>a table</source>
        <translation>某张表</translation>
    </message>
    <message>
        <source>a gift plays it</source>
        <translation>有礼物使用</translation>
    </message>
    <message>
        <source>the flash table names it</source>
        <translation>动画表中有它</translation>
    </message>
</context>
<context>
    <name>TimeSlider</name>
    <message>
        <source>A mark for every moment at which something changes</source>
        <translation>每个变化时刻对应一个刻度</translation>
    </message>
    <message>
        <source>The change before</source>
        <translation>上一个变化</translation>
    </message>
    <message>
        <source>The change after</source>
        <translation>下一个变化</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>现在</translation>
    </message>
    <message>
        <source>The present moment</source>
        <translation>当前时刻</translation>
    </message>
</context>
<context>
    <name>TrafficPlot</name>
    <message>
        <source>bytes a second</source>
        <translation>字节/秒</translation>
    </message>
    <message>
        <source>requests a second</source>
        <translation>请求/秒</translation>
    </message>
    <message>
        <source>failures a second</source>
        <translation>失败/秒</translation>
    </message>
    <message>
        <source>The last two minutes, second by second; the number is that of the highest bar</source>
        <translation>最近两分钟，每秒一条；数字为最高一条的值</translation>
    </message>
</context>
<context>
    <name>Wearables</name>
    <message>
        <source>picture</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>none is named</source>
        <translation>未指定</translation>
    </message>
    <message>
        <source>from %1</source>
        <translation>%1 起</translation>
    </message>
    <message>
        <source>until %1</source>
        <translation>%1 止</translation>
    </message>
    <message>
        <source>badge that comes with the client</source>
        <translation>客户端自带徽标</translation>
    </message>
    <message>
        <source>the level&apos;s own</source>
        <translation>该等级自有</translation>
    </message>
    <message>
        <source>the ladder&apos;s title</source>
        <translation>等级阶梯称号</translation>
    </message>
    <message>
        <source>the table&apos;s title</source>
        <translation>表中称号</translation>
    </message>
    <message>
        <source>experience</source>
        <translation>经验</translation>
    </message>
    <message>
        <source>ingots</source>
        <translation>元宝</translation>
    </message>
    <message>
        <source>car</source>
        <translation>座驾</translation>
    </message>
    <message>
        <source>badge&apos;s animation</source>
        <translation>徽标动画</translation>
    </message>
    <message>
        <source>group %1</source>
        <translation>第 %1 组</translation>
    </message>
    <message>
        <source>moves</source>
        <translation>动态</translation>
    </message>
    <message>
        <source>moving picture</source>
        <translation>动态图片</translation>
    </message>
    <message>
        <source>description</source>
        <translation>说明</translation>
    </message>
    <message>
        <source>group, place in it</source>
        <translation>组，组内次序</translation>
    </message>
    <message>
        <source>size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>not sold</source>
        <translation>不出售</translation>
    </message>
    <message>
        <source>animation</source>
        <translation>动画</translation>
    </message>
    <message>
        <source>price</source>
        <translation>价格</translation>
    </message>
    <message>
        <source>%1 diamonds</source>
        <translation>%1 钻石</translation>
    </message>
    <message>
        <source>on sale</source>
        <translation>出售时段</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>stays for</source>
        <translation>停留时间</translation>
    </message>
    <message>
        <source>activity</source>
        <translation>活动</translation>
    </message>
    <message>
        <source>worn</source>
        <translation>佩戴时段</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Shows what a client sees: tables, pictures, masks, caches, log.
Without options it serves itself the example content.</source>
        <translation>查看客户端所见：表、图片、屏蔽词、缓存、日志。
不带选项时自行提供示例内容。</translation>
    </message>
    <message>
        <source>base address of the content server</source>
        <translation>内容服务器的基地址</translation>
    </message>
    <message>
        <source>the working folder; else one of its own, for now</source>
        <translation>工作文件夹；否则使用临时文件夹</translation>
    </message>
    <message>
        <source>published content to serve to itself</source>
        <translation>自行提供的已发布内容</translation>
    </message>
    <message>
        <source>such as en or zh_CN; else that of the system, or English</source>
        <translation>如 en 或 zh_CN；否则为系统语言或英语</translation>
    </message>
    <message>
        <source>light or dark; else that of the system</source>
        <translation>light 或 dark；否则跟随系统</translation>
    </message>
    <message>
        <source>the page to begin with, and what to show on it</source>
        <translation>起始页面，及要显示的内容</translation>
    </message>
    <message>
        <source>Not an option: %1</source>
        <translation>不是选项：%1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not the address of a content server</source>
        <translation>“%1”不是内容服务器的地址</translation>
    </message>
    <message>
        <source>There is no palette %1; known are light, dark</source>
        <translation>没有配色 %1；可用的有 light、dark</translation>
    </message>
    <message>
        <source>There is no page %1; known are %2</source>
        <translation>没有页面 %1；可用的有 %2</translation>
    </message>
    <message>
        <source>There is no translation to %1; known are %2</source>
        <translation>没有译文 %1；可用的有 %2</translation>
    </message>
</context>
</TS>
