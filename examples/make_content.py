#!/usr/bin/env python3
"""Writes examples/content/: everything an operator of the service would publish.

The folder is laid out so that any static web server can serve it as it stands; docs/content.md
describes the layout. The content is derived from the tables in this file alone (no clock, no random
numbers), so a second run writes the same bytes.

    make_content.py           write the folder, removing files that no longer belong to it
    make_content.py --check   write nothing; exit 1 naming the first difference
"""

import datetime
import io
import json
import pathlib
import re
import sys
import zipfile
import zlib

from pictures import archive, film, moving_picture, picture

CONTENT = pathlib.Path(__file__).resolve().parent / "content"
CATALOGUE = CONTENT.parents[1] / "src" / "datatable" / "EDataTable.h"
ALWAYS = ("2020-01-01 00:00:00", "2099-12-31 23:59:59")

# ---- the published versions, in the catalogue's order -----------------------------------------

VERSIONS = {
    "PublicConfig": 12, "SystemConfig": 31, "NobleConsume": 6, "NobleConfig": 9,
    "FansConfigNew": 14, "FlashConfig": 22, "AnchorLevel": 3, "StampName": 7,
    "NewChatFilterWordKey": 41, "QuickInputMessage": 5, "BubbleConfig": 35,
    "NoblePrivilegeConfig": 8, "Doutu": 11, "H5WebConfig": 27, "Message": 18, "CS_GiftList": 57,
    "CS_CarList": 24, "CS_MedalList": 33, "CS_HeadframeList": 29, "CS_GiftLabel": 4,
    "CS_BannerConfig": 46, "CS_VideoHobbyBanner": 13, "ChatFilterWordKey": 19,
    "CS_PlatAwardEffect": 10, "CS_PlatFunLevel": 15, "GroupWelComeWord": 2,
    "CS_GameGiftList": 16, "PCSkin": 17, "RecreationConfigNew": 20, "FirstRechargeBoxTask": 1,
    "CS_FunStamp": 21, "CS_BannerConfigNew": 23, "CS_PkRankInfo": 25,
}

# ---- collecting files --------------------------------------------------------------------------

FILES = {}
FOLDED = {}


def put(path, data):
    """Adds a file, refusing what some file system could not hold beside the others."""
    if any(c in '<>:"\\|?*' or ord(c) < 32 for c in path) or any(p[-1:] in ". " for p in path.split("/")):
        raise ValueError(f"{path}: not a portable file name")
    if FOLDED.setdefault(path.lower(), path) != path:
        raise ValueError(f"{path}: differs only in letter case from {FOLDED[path.lower()]}")
    if FILES.setdefault(path, data) != data:
        raise ValueError(f"{path}: two different contents")


def text(value):
    return json.dumps(value, ensure_ascii=False)


def table(key, columns, rows):
    """Adds a table file; a row of the table a line of the file."""
    columns = columns.split()
    for row in rows:
        if row is not None and len(row) != len(columns):
            raise ValueError(f"{key}: {len(row)} cells for {len(columns)} columns: {row}")
    body = ",\n".join(text(row) for row in rows)
    put("app/resources/" + key, f'{{"columns": {text(columns)},\n"rows": [\n{body}\n]}}\n'.encode())


# ---- gifts -------------------------------------------------------------------------------------

GIFT_COLUMNS = """id giftId giftName giftType price valid isVisible startTime endTime alterDateTime
    prankType animationName pcAnimationName animScaleRate duration broadcastStart broadcastEnd
    broadcastDuration broadcastAnimationName broadcastBgAndAnimationName descs showArea sequenceId
    giftLabelId labelStartTime labelEndTime giftDisplayLocation giftFamily maxGiftGroup
    sendTimeInterval showTab showTabIcon activityPage wishGift effectUrl activityId clientParam
    assignId"""

# name, shape, price, animation ("" for none), animation of this client, scale, prank
GIFT_KINDS = [
    ("玫瑰", "heart", 1, "", "", 1, 0), ("棒棒糖", "disk", 2, "", "", 1, 0),
    ("气球", "leaf", 5, "", "", 1, 0), ("小心心", "heart", 6, "", "", 1, 0),
    ("掌声", "star", 8, "", "", 0, 0), ("奶茶", "box", 12, "", "", 1, 0),
    ("拖鞋", "leaf", 18, "slipper", "", 1, 1), ("砖头", "box", 20, "brick", "", 1, 2),
    ("花束", "flower", 52, "bouquet", "", 1, 0), ("口红", "rocket", 66, "lipstick.zip", "", 1, 0),
    ("香槟", "rocket", 99, "champagne", "champagne_pc", 1, 0),
    ("蛋糕", "box", 188, "cake.zip", "", 1.5, 0), ("钻戒", "ring", 520, "diamondring", "", 1, 0),
    ("皇冠", "crown", 888, "crown", "crown_pc.zip", 2, 0),
    ("跑车", "tag", 1314, "sportscar", "", 2, 0), ("游艇", "tag", 2888, "yacht", "yacht.mp4", 2, 0),
    ("飞机", "star", 5200, "airplane", "", 3, 0), ("城堡", "crown", 9999, "castle", "castle_pc", 3, 0),
    ("火箭", "rocket", 13140, "rocket", "", 3, 0), ("银河", "gem", 33440, "galaxy", "galaxy_pc", 3, 0),
]

# Animations that play over the whole room, with the background behind them.
GIFT_BROADCASTS = {"airplane": "airplane_sky", "castle": "castle_night", "rocket": "rocket_pad",
                   "galaxy": "galaxy_deep"}

# name, price factor, start, end, label, display location, family, tab, activity
GIFT_SERIES = [
    ("星光", 1, *ALWAYS, "", 0, 0, 1, ""),
    ("浪漫", 1, *ALWAYS, "1", 0, 0, 1, ""),
    ("璀璨", 2, *ALWAYS, "", 0, 1, 1, ""),
    ("甜蜜", 1, "2021-05-20 00:00:00", "2099-05-20 23:59:59", "2", 2, 1, 1, ""),
    ("幸运", 3, *ALWAYS, "3", 2, 2, 2, ""),
    ("梦幻", 2, "2022-08-01 10:00:00", "2098-08-01 09:59:59", "", 0, 2, 2, ""),
    ("黄金", 5, *ALWAYS, "4", 0, 3, 2, ""),
    ("粉丝团", 2, *ALWAYS, "", 1, 4, 3, ""),
    ("贵族", 8, *ALWAYS, "5", 3, 5, 3, ""),
    ("初雪", 1, "2023-11-08 00:00:00", "2024-02-03 23:59:59", "", 0, 0, 4, "winter2023"),
    ("中秋", 2, "2024-09-10 00:00:00", "2024-09-18 23:59:59", "6", 0, 0, 4, "moon2024"),
    ("新春", 2, "2025-01-20 00:00:00", "2025-02-13 23:59:59", "6", 0, 0, 4, "spring2025"),
    ("盛典", 4, "2025-12-01 00:00:00", "2099-01-01 00:00:00", "7", 0, 0, 5, "annual"),
    ("周年", 4, "2025-03-18 20:00:00", "2097-03-18 20:00:00", "7", 2, 0, 5, "anniversary"),
    ("未来", 2, "2090-01-01 00:00:00", "2099-12-31 23:59:59", "", 0, 0, 6, ""),
    ("世纪", 6, "2095-06-01 12:00:00", "2099-12-31 23:59:59", "8", 0, 0, 6, "century"),
]
TAB_ICONS = {4: "app/images/tab/festival.png", 5: "app/images/tab/gala.png", 6: "app/images/tab/future.png"}

# Whose sale ended before that of their series.
ENDED = {"G1014": "2026-01-31 23:59:59"}

# giftId, name, price: hidden from the panel, but the client sends them all the same
HIDDEN_GIFTS = [("Annual2024G19", "年度荣耀", 1999), ("Annual2024G20", "年度巅峰", 19999),
                ("Anniversary2025G18", "周年之约", 1888)]


def gift(number, gift_id, kind, series, own_name=""):
    """One row, as a dictionary from column to cell."""
    thing, _, price, animation, pc_animation, scale, prank = kind
    title, factor, start, end, label, location, family, tab, activity = series
    name = own_name or title + thing
    changed = datetime.datetime(2026, 1, 5, 9, 30) + datetime.timedelta(hours=7 * number)
    big = price >= 500
    client = {"pcIconGeo": f"{8 + number % 5},{6},{60},{60}", "showGiftPanelType": tab % 3} if big else {}
    return {
        "id": number, "giftId": gift_id, "giftName": name, "giftType": 1 + big + (price >= 5000),
        "price": price * factor, "valid": True, "isVisible": True, "startTime": start, "endTime": end,
        "alterDateTime": str(changed), "prankType": prank, "animationName": animation,
        "pcAnimationName": pc_animation, "animScaleRate": scale, "duration": 3 + 2 * big,
        "broadcastStart": "1" if big else "", "broadcastEnd": "9999" if big else "",
        "broadcastDuration": 8 if big else 0,
        "broadcastAnimationName": animation + "_cast" if animation in GIFT_BROADCASTS else "",
        "broadcastBgAndAnimationName": GIFT_BROADCASTS.get(animation, ""),
        "descs": f"{title}系列：送主播一份{name}", "showArea": 3 if location else 1,
        "sequenceId": 10 * number, "giftLabelId": label, "labelStartTime": start if label else "",
        "labelEndTime": end if label else "", "giftDisplayLocation": location, "giftFamily": family,
        "maxGiftGroup": 99 if big else 9999, "sendTimeInterval": 1000 if big else 0, "showTab": tab,
        "showTabIcon": TAB_ICONS.get(tab, ""),
        "activityPage": f"https://h5.example.com/activity/{activity}" if activity else "",
        "wishGift": int(factor == 1), "effectUrl": "", "activityId": activity,
        "clientParam": text(client) if client else "", "assignId": "anchor_10001" if family == 4 else "",
    }


def gifts():
    rows = []
    for series_index, series in enumerate(GIFT_SERIES):
        for kind_index, kind in enumerate(GIFT_KINDS):
            number = series_index * len(GIFT_KINDS) + kind_index + 1
            gift_id = f"G{1000 + number}"
            cells = gift(number, gift_id, kind, series)
            cells["valid"] = number % 53 != 7
            cells["isVisible"] = number % 41 != 5
            cells["endTime"] = ENDED.get(gift_id, cells["endTime"])
            rows.append(list(cells.values()))
            if cells["valid"]:
                put("app/logo/gift/" + gift_id, picture(kind[1], number, 96))
            if cells["valid"] and cells["broadcastBgAndAnimationName"]:
                put("app/logo/gift/bc" + gift_id, picture("sheet", kind_index, 120, 40))
    for index, (gift_id, name, price) in enumerate(HIDDEN_GIFTS):
        kind = ("", "star", price, "crown", "", 2, 0)
        series = ("年度", 1, *ALWAYS, "7", 0, 0, 5, "annual")
        cells = gift(400 + index, gift_id, kind, series, name)
        cells["isVisible"] = False
        rows.append(list(cells.values()))
        put("app/logo/gift/" + gift_id, picture("star", 400 + index, 96))
    rows.insert(25, None)  # a row that was emptied where the others were to stay in their lines
    table("CS_GiftList", GIFT_COLUMNS, rows)

    game_series = ("游戏", 1, *ALWAYS, "", 0, 6, 1, "")
    table("CS_GameGiftList", GIFT_COLUMNS,
          [list(gift(500 + index, f"P{2001 + index}", kind, game_series).values())
           for index, kind in enumerate(GIFT_KINDS)])
    for index, kind in enumerate(GIFT_KINDS):
        put(f"app/logo/gift/P{2001 + index}", picture(kind[1], 500 + index, 96))

    for number, (_, shape, _, *names, _, _) in enumerate(GIFT_KINDS):
        for name in filter(None, names):
            data = film() if name.endswith(".mp4") else archive(name.partition(".")[0], shape, number)
            put("app/logo/giftanimation/" + name, data)
    for number, (name, background) in enumerate(GIFT_BROADCASTS.items()):
        for behind in (name + "_cast", background):
            put("app/logo/giftanimation/bc" + behind, archive("bc" + behind, "sheet", number))
    for number, icon in enumerate(TAB_ICONS.values()):
        put(icon, picture("tag", number))

    labels = ["热门", "甜蜜", "幸运", "黄金", "贵族", "节日", "盛典", "预告"]
    table("CS_GiftLabel", "id alterDateTime giftLabelName startColor endColor",
          [[str(n), f"2026-02-{n:02} 12:00:00", name, f"#FF{16 * n:02X}40", f"#FF{25 * n:02X}A0"]
           for n, name in enumerate(labels, 1)])


# ---- identity: levels, cars, frames, medals, stamps ------------------------------------------------

# Rank titles with the levels in each, and the name of the badge
RANKS = [(5, "平民 pm 富商 fs 勋爵 xj 男爵 nj 子爵 zj 伯爵 bj 侯爵 hj 公爵 gj 郡侯 jh 郡公 jg "
             "国公 gg 郡王 jw 藩王 pw 亲王 qw"),
         (10, "国王 gw 帝王 dw 帝尊 dz 皇帝 hd 天帝 td 仙帝 xd 仙尊 xz 圣皇 sh 神君 sj 创世神 css "
              "万象神 wxs 无极神 wjs 永恒神 yhs")]

CARS = [("car_scooter", "小电驴", 100), ("car_bike", "单车", 60), ("car_taxi", "的士", 300),
        ("car_jeep", "越野车", 1200), ("car_coupe", "轿跑", 3000), ("car_carriage", "皇家马车", 6800),
        ("car_whale", "鲸鱼", 8800), ("car_dragon", "金龙", 18800), ("noble_knight", "骑士战马", 0),
        ("noble_duke_red", "公爵红辇", 0), ("noble_duke_gold", "公爵金辇", 0), ("noble_emperor", "帝王龙舟", 0)]

# id, type, name, picture, animation, version, while speaking, periods (start, end, picture, animation)
FRAMES = [
    (0, 0, "默认", "plain.png", "", 1, "", []),
    (101, 1, "樱花", "sakura.png", "frame_sakura", 3, "mic_sakura", []),
    (102, 1, "海浪", "wave.png", "frame_wave", 2, "", []),
    (103, 1, "昼夜", "dayandnight.png", "frame_dawn", 7, "mic_night",
     [("22:00:00", "06:00:00", "night.png", "frame_night"), ("06:00:00", "18:00:00", "day.png", "frame_day"),
      ("18:00:00", "22:00:00", "dusk.png", "frame_dusk")]),
    (104, 1, "早茶", "tea.png", "frame_tea", 4, "", [("07:00:00", "10:00:00", "teahot.png", "frame_teahot")]),
    (201, 2, "骑士", "knight.png", "frame_knight", 5, "", []),
    (202, 2, "公爵", "duke.png", "frame_duke", 5, "mic_duke", []),
    (203, 2, "帝王", "emperor.png", "frame_emperor", 6, "mic_emperor", []),
]

MEDALS = ["新人", "签到达人", "话痨", "送礼新星", "送礼之星", "送礼王者", "守护一级", "守护二级", "守护三级",
          "贵族骑士", "贵族公爵", "贵族帝王", "年度贡献", "年度巅峰", "周年纪念", "房管", "官方", "首充"]


def levels():
    rows, level = [], 0
    for size, ranks in RANKS:
        words = ranks.split()
        for title, badge in zip(words[::2], words[1::2]):
            big_icon = f"lv_{badge}_big.png"
            put("rn/level/funlevel/" + big_icon, picture("crown", level, 64))
            for step in range(1, size + 1):
                level += 1
                rows.append([level, 50 * level * level, 10 * level * level, f"{title}{step}",
                             CARS[level // 40][0] if level % 40 == 0 else "", int(level > 70),
                             f"lv_{badge}.png", big_icon, title, f"icon_{badge}" if level > 100 else "",
                             f"#{level:02X}2060", f"#FFD{level % 10}00", "level_up" if level > 120 else "",
                             "noble_enter" if level > 150 else ""])
    table("CS_PlatFunLevel", """level exp ingots levelName carId upgradeType iconName bigIconName name
          iconFlashName levelBackgroundColor levelBorderColor bcFlashName enterFlashName""", rows)
    table("AnchorLevel", "level exp levelName managerCount",
          [[n, 200 * n * n, f"主播{n}级", 2 + n // 5] for n in range(1, 61)])
    pk_ranks = ["青铜", "白银", "黄金", "铂金", "钻石", "星耀", "王者"]
    table("CS_PkRankInfo", "id rankName minScore maxScore starNum color",
          [[n, name, 1000 * (n - 1), 1000 * n - 1, min(n + 2, 5), f"#{30 * n:02X}80FF"]
           for n, name in enumerate(pk_ranks, 1)])


def decorations():
    table("CS_CarList", "id name description price animation picture version startTime endTime",
          [[car, name, f"乘{name}进场", price, f"{car}_run", f"{car}.png", 1 + n % 4, *ALWAYS]
           for n, (car, name, price) in enumerate(CARS)])
    for number, (car, _, _) in enumerate(CARS):
        put(f"app/logo/car/{car}.png", picture("tag", number, 96, 64))
        put(f"app/logo/caranimation/{car}_run", archive(f"{car}_run", "tag", number))

    rows = []
    for number, (frame, kind, name, icon, flash, version, mic, periods) in enumerate(FRAMES):
        schedule = [dict(zip(("startTime", "endTime", "icon1", "flash"), period)) for period in periods]
        rows.append([frame, kind, name, f"{name}头像框", icon, flash, version, mic,
                     text({"periodConfigs": schedule}) if schedule else ""])
        for step, picture_name in enumerate([icon] + [period[2] for period in periods]):
            put("app/logo/headframe/" + picture_name, picture("ring", number + 10 * step, 96))
    table("CS_HeadframeList", """headFrameId headFrameType name description icon2 flash version
          micAnimation timePeriodConfig""", rows)

    rows = []
    for number, name in enumerate(MEDALS, 1):
        moving = f"/app/images/activity/tags/medal_{number}_moving.png" if number in (6, 9, 12, 14) else ""
        rows.append([number, (number - 1) // 3 + 1, (number - 1) % 3, 1 + number % 2, name, 0, int(number > 12),
                     "48*48", f"medal_{number}.png", f"获得「{name}」的用户佩戴", int(number < 4), 2, moving,
                     "长期" if number < 13 else "90天"])
        put(f"app/images/activity/tags/medal_{number}.png", picture("star", number))
        if moving:
            put(moving[1:], moving_picture(("star", "gem", "disk"), number))
    table("CS_MedalList", """medalId groupId groupSort type name groupHandleType timeHandleType size icon
          description isCommon version dynamicUrl keepTime""", rows)

    stamps = ["优秀", "可爱", "加油", "大卖", "冠军", "盖章认证", "好听", "绝了"]
    table("StampName", "id name picture duration version",
          [[str(n), name, f"stamp_{n}.png", 30 * n, 1] for n, name in enumerate(stamps, 1)])
    for number in range(1, len(stamps) + 1):
        put(f"app/logo/stamp/stamp_{number}.png", picture("disk", number, 64))
    fun_stamps = [("spring2025", "春联"), ("spring2025", "灯笼"), ("moon2024", "月饼"), ("annual", "奖杯"),
                  ("annual", "聚光灯"), ("anniversary", "蜡烛")]
    table("CS_FunStamp", "id activityId name picture startTime endTime",
          [[str(n), activity, name, f"fun_{n}.png", *ALWAYS] for n, (activity, name) in enumerate(fun_stamps, 1)])
    for number in range(1, len(fun_stamps) + 1):
        put(f"app/logo/funstamp/fun_{number}.png", picture("flower", number, 64))


# ---- chat --------------------------------------------------------------------------------------

# Invented phrases of the kind that a live-streaming service wants out of its chats
OLD_WORDS = (["代充", "低价", "折扣", "秒到", "内部", "半价", "刷单", "返现", "转让", "出售", "回收", "批发", "包过", "破解"],
             ["钻石", "金豆", "礼物", "等级", "贵族", "座驾", "勋章", "会员", "币", "红包", "账号", "靓号", "喇叭", "守护"])
OLD_LATIN = (["free", "cheap", "hack", "sell", "fast", "buy"],
             ["gems", "coins", "levels", "gifts", "medals", "accounts"])
NEW_WORDS = (["加群", "加好友", "扫码", "私聊", "看主页", "点头像", "回复我", "来隔壁", "进小窝", "找客服", "搜暗号", "发口令",
              "看签名", "点链接", "留号码", "组队"],
             ["领钻石", "领金豆", "换礼物", "刷等级", "送贵族", "卖号", "代练", "返利", "兼职", "抽奖", "免费看", "拿福利",
              "赚零花", "得座驾"])
NEW_LATIN = (["vip", "bonus", "lucky", "super", "mega", "top"],
             ["farm", "bots", "cash", "spins", "drops", "codes", "deals"])
IN_BOTH = ["freegems", "代充钻石", "低价金豆", "加群领钻石"]

WELCOMES = [["欢迎来到直播间！", "嗨，等你好久了", ""], ["欢迎新朋友，先坐下喝口茶", "", "来啦来啦，快进群聊聊"],
            ["", "今天也要开心呀", "欢迎加入大家庭"], ["新朋友报个到吧", "欢迎欢迎，热烈欢迎", "有缘千里来相会"],
            ["", "", "主播说：看到你真好"]]

QUICK = ["主播好！", "唱得真好听", "再来一首", "666", "支持主播", "求点歌", "这首歌叫什么？", "晚安，明天见", "哈哈哈哈",
         "刚来，发生了什么？"]

# id, tab, handling, name, text, option, jump address
MESSAGES = [
    (101, 1, 0, "follow", "%1 关注了主播", "", ""), (102, 1, 0, "enter", "欢迎 %1 进入直播间", "", ""),
    (103, 1, 1, "gift", "%1 送出 %2 x%3", "", ""), (104, 2, 0, "level", "恭喜 %1 升到 %2", "", ""),
    (105, 2, 2, "noble", "%1 开通了 %2", "查看特权", "https://h5.example.com/noble"),
    (106, 2, 0, "fans", "%1 加入了守护团", "我也加入", "https://h5.example.com/fans"),
    (107, 3, 0, "mute", "%1 被禁言 %2 分钟", "", ""), (108, 3, 0, "kick", "%1 被请出直播间", "", ""),
    (109, 3, 3, "update", "客户端有新版本", "立即更新", "https://www.example.com/download"),
    (110, 0, 0, "network", "网络不稳定，正在重新连接", "", ""),
]


def words(*lists):
    """Every first half with every second half, list after list."""
    return [first + second for firsts, seconds in lists for first in firsts for second in seconds]


def chat():
    old = words(OLD_WORDS, OLD_LATIN) + ["拉人头", "送话费"] + IN_BOTH[3:]
    new = words(NEW_WORDS, NEW_LATIN) + IN_BOTH[:3]
    table("ChatFilterWordKey", "key", [[word] for word in old])
    table("NewChatFilterWordKey", "key", [[word] for word in new])
    table("GroupWelComeWord", "first second third", WELCOMES)
    table("QuickInputMessage", "id item", [[str(n), phrase] for n, phrase in enumerate(QUICK, 1)])
    table("Message", "id randomId zh_cn handleType opt tabType jumpUrl",
          [[n, f"msg_{name}", line, handling, option, tab, jump]
           for n, tab, handling, name, line, option, jump in MESSAGES])

    bubbles = ["素白", "薄荷", "樱粉", "夜空", "骑士", "公爵", "帝王", "周年"]
    table("BubbleConfig", "bubbleId bubbleType name descs borderWidths paddings",
          [[n, 1 + (n > 4), name, f"{name}气泡", "17" if n < 5 else "20,24,20,24", "-10" if n < 5 else "-12"]
           for n, name in enumerate(bubbles, 1)])
    for number in range(1, len(bubbles) + 1):
        put(f"app/images/nineImage/bubble_bg_{number}.9.png", picture("ninepatch", number, 60, 44))
        put(f"app/images/nineImage/bubble_chat_{number}.9.png", picture("ninepatch", number, 120, 66))
        put(f"app/images/nobility/bubble_small_{number}.png", picture("tag", number, 48, 32))

    stickers = [(group, f"{mood}_{n:02}.png", 1 + n % 3) for group, mood, count in
                ((1, "smile", 8), (2, "cry", 6), (5, "cat", 9)) for n in range(1, count + 1)]
    table("Doutu", "name version group", [[name, str(version), str(group)] for group, name, version in stickers])
    for number, (_, name, _) in enumerate(stickers):
        put("app/images/doutu/" + name, picture("face", number, 96))


# ---- presentation ------------------------------------------------------------------------------

# id, type, name, landing page kind, landing page, weight, live, half, embedded, position, level, tip
BANNERS = [
    (1, 1, "盛典开幕", 1, "https://h5.example.com/activity/annual?from=banner", 30, 0, 0, 1, "pc_anchor,app", -1, 0),
    (2, 1, "新人首充", 1, "https://h5.example.com/recharge/first", 10, 0, 1, 1, "pc_anchor", 5, 1),
    (3, 2, "周年回顾", 1, "https://h5.example.com/activity/anniversary", 20, 0, 0, 0, "app,pc_anchor", -1, 0),
    (4, 2, "推荐直播间", 2, "room:10001", 20, 1, 0, 0, "pc_anchor", -1, 2),
    (5, 3, "文字公告", 1, " https://www.example.com/notice/2026 ", 40, 0, 0, 1, "pc_anchor", -1, 0),
    (6, 1, "手机专享", 1, "https://h5.example.com/app/only", 5, 0, 0, 1, "app", -1, 0),
]
NEW_BANNERS = [
    (7, 1, "任务中心", 1, "https://h5.example.com/task/center", 50, 0, 1, 1, "pc_anchor", -1, 0),
    (8, 2, "粉丝团升级", 1, "https://h5.example.com/fans/up", 15, 0, 0, 0, "pc_anchor", 20, 0),
    (3, 2, "周年回顾（展开）", 1, "https://h5.example.com/activity/anniversary?wide=1", 25, 0, 0, 1, "pc_anchor", -1, 0),
    (9, 1, "网页活动", 1, "https://h5.example.com/web/only", 5, 0, 0, 0, "web", -1, 0),
]

PUBLIC = ["400-000-0000 客服热线", "60 聊天内容最大字数", "3 聊天间隔（秒）", "16 礼物面板每页个数", "5 连送倒计时（秒）",
          "10 单次充值下限（元）", "100 每元可得钻石", "10001 官方直播间", "/app/images/default/avatar.png 默认头像",
          "10000 全站广播最低价格", "30 心跳间隔（秒）", "请文明直播 主播公告"]

# id, key, value, description, parameters
SYSTEM = [
    (1, "giftComboEnable", "1", "礼物连送开关", ""), (2, "chatFilterEnable", "1", "聊天过滤开关", ""),
    (3, "chatMinFunLevel", "2", "发言所需等级", ""),
    (5, "pkEnable", "1", "对战开关", "duration=300;punish=120"),
    (8, "flyScreenPrice", "1000", "飞屏价格（钻石）", ""), (12, "maxLinkMic", "6", "最多连麦人数", "vip=8"),
    (13, "screenShareEnable", "0", "屏幕共享开关", ""),
    (20, "videoBitrate", "2500", "推流码率", "min=800;max=6000"),
    (21, "videoSizes", "1280x720", "推流分辨率", "1920x1080,1280x720,960x540"),
    (30, "firstRechargeEnable", "1", "首充宝箱开关", ""), (31, "nobleEnterEffect", "1", "贵族进场特效", ""),
    (40, "cacheTidyEnable", "1", "清理本地缓存", ""),
]

# id, key, default path, description, path for this client
H5_PAGES = [
    (1, "recharge", "web/recharge.html", "充值", "web/pc/recharge.html"),
    (2, "nobleCenter", "web/noble.html", "贵族中心", "web/pc/noble.html?tab=1"),
    (3, "fansGroup", "web/fans.html", "守护团", ""),
    (4, "levelPrivilege", "web/level.html", "等级特权", ""),
    (5, "medalWall", "web/medal.html", "勋章墙", ""),
    (6, "activityCenter", "web/activity.html", "活动中心", "https://h5.example.com/activity"),
    (7, "anchorAcademy", "web/academy.html", "主播学院", "https://h5.example.com/academy?entry=pc"),
    (8, "helpCenter", "web/help.html", "帮助中心", "http://help.example.com/pc"),
    (9, "feedback", "web/feedback.html", "意见反馈", ""),
    (10, "userAgreement", "web/agreement.html", "用户协议", ""),
    (11, "pkRank", "web/pkrank.html", "对战榜", "web/pc/pkrank.html"),
]


def presentation():
    seconds = [int((datetime.datetime(year, 1, 1) - datetime.datetime(1970, 1, 1)).total_seconds())
               for year in (2020, 2099)]
    for key, banners in (("CS_BannerConfig", BANNERS), ("CS_BannerConfigNew", NEW_BANNERS)):
        rows = []
        folder = key[3:].lower()
        for number, kind, name, lp, page, weight, live, half, cef, position, level, tip in banners:
            content = f"/app/images/{folder}/{number}.png" if kind < 3 else name
            rows.append([number, kind, content, lp, page, weight, 1000 * seconds[0], 1000 * seconds[1],
                         live, half, cef, position, name, level, tip])
            if kind < 3:
                put(content[1:], picture("sheet", number + len(key), 240, 80))
        table(key, """id bannerType bannerContent lpType landingPage weight startDate endDate isLive isHalf
              isCefOpen showPosition name showByFunLevel tipsType""", rows)
    large = [("https://h5.example.com/large/gala?full=1", 1), ("https://h5.example.com/large/plain", 0)]
    put("cms/app/data/bannerConfigInfo", (text(
        {"data": [{"isCefOpen": cef, "landingPage": page} for page, cef in large]}) + "\n").encode())
    table("CS_VideoHobbyBanner", "id targetObject isCefOpen",
          [[1, "https://h5.example.com/hall/dance", 1], [2, "https://h5.example.com/hall/music", 0],
           [3, " https://h5.example.com/hall/game?tab=2 ", 1], [4, "https://h5.example.com/", 0]])

    table("PCSkin", "id version desc", [["6", "2", "海岛夏日"], ["7", "3", "初雪"]])
    for skin, version in (("6", "2"), ("7", "3")):
        put(f"app/images/pcskin/{skin}_0_{version}", picture("sheet", int(skin), 160, 96))
        put(f"app/images/pcskin/{skin}_1_{version}", picture("sheet", int(skin) + 1, 160, 24))
    table("H5WebConfig", "id key defaultPath desc pcURL PC001",
          [[str(n), key, path, desc, pc, "1" if pc else ""] for n, key, path, desc, pc in H5_PAGES])
    table("PublicConfig", "id value desc",
          [[str(n), *setting.split(" ")] for n, setting in enumerate(PUBLIC, 1)])
    put("app/images/default/avatar.png", picture("face", 1, 96))
    table("SystemConfig", "id configKey configValue desc params", [[str(n), *rest] for n, *rest in SYSTEM])


# ---- privileges --------------------------------------------------------------------------------

# category, its name, tiers of (name, price, guard value)
FANS = [
    (1, "守护", [("月守护", 520, 100), ("季守护", 1314, 320), ("年守护", 5200, 1500)]),
    (2, "粉丝团", [("入团", 10, 1), ("铁粉", 100, 12), ("金粉", 520, 66), ("钻粉", 2000, 300)]),
    (3, "荣耀", [("荣耀一星", 100, 10), ("荣耀二星", 300, 36), ("荣耀三星", 900, 120), ("荣耀四星", 2700, 400),
                 ("荣耀五星", 8100, 1300)]),
]

# name, price, frame, car, whether the car's name is the beginning of several
NOBLES = [("勇士", 120, "", "", 0), ("骑士", 500, "201", "noble_knight", 0), ("男爵", 1200, "", "", 0),
          ("伯爵", 3000, "", "", 0), ("侯爵", 8000, "", "car_carriage", 0),
          ("公爵", 20000, "202", "noble_duke", 1), ("帝王", 120000, "203", "noble_emperor", 0)]

PRIVILEGES = [("进场特效", 1), ("专属座驾", 2), ("专属头像框", 2), ("贵族气泡", 1), ("防禁言", 4), ("隐身入场", 5),
              ("专属客服", 5), ("全站喇叭", 6), ("靓号", 6), ("开机大图", 7)]


def privileges():
    rows = []
    for category, category_name, tiers in FANS:
        for tier, (name, diamond, guard) in enumerate(tiers, 1):
            rows.append([f"{category}{tier:02}", name, str(diamond), f"2025-0{category}-{tier:02} 10:00:00",
                         CARS[tier][0] if tier > 2 else "", str(6 + category), f"90{category}{tier}", str(tier),
                         str(guard), str(category), category_name, str(diamond // 10)])
    table("FansConfigNew", """id name diamond addTime rewardCarId rewardMedl brocastId sortValue guardVal
          category categoryName cancelDiamond""", rows)

    table("NobleConsume", """nobleId nobleName blackBean returnDiamond upgradeReturnDiamond renewBlackBean
          renewReturnDiamond time""",
          [[str(n), name, str(price), str(price // 2),
            ",".join(str((price - below) // 2) for _, below, *_ in NOBLES[:n - 1]), str(price * 4 // 5),
            str(price * 2 // 5), "30"] for n, (name, price, *_) in enumerate(NOBLES, 1)])
    table("NobleConfig", "nobleId chatSkinList headFrameId exclusiveCar customCar",
          [[str(n), ",".join(str(skin) for skin in range(5, min(n, 7) + 1)), frame, car, str(custom)]
           for n, (_, _, frame, car, custom) in enumerate(NOBLES, 1)])
    table("NoblePrivilegeConfig", "id nobleId name description icon sortValue isOpen",
          [[str(n), str(noble), name, f"{NOBLES[noble - 1][0]}及以上享有{name}", f"privilege_{n}.png", 10 * n, n != 9]
           for n, (name, noble) in enumerate(PRIVILEGES, 1)])
    for number in range(1, len(PRIVILEGES) + 1):
        put(f"app/logo/nobleprivilege/privilege_{number}.png", picture("gem", number))

    boxes = [("小宝箱", 6, "G1009,car_scooter"), ("大宝箱", 30, "G1012,car_taxi,medal_18"),
             ("豪华宝箱", 98, "G1014,car_jeep,medal_18"), ("至尊宝箱", 328, "G1018,car_coupe,medal_18,frame_101")]
    table("FirstRechargeBoxTask", "id name amount rewards picture startTime endTime",
          [[str(n), name, amount, rewards, f"box_{n}.png", *ALWAYS]
           for n, (name, amount, rewards) in enumerate(boxes, 1)])
    for number in range(1, len(boxes) + 1):
        put(f"app/logo/firstrecharge/box_{number}.png", picture("box", number, 96))


# ---- effects -----------------------------------------------------------------------------------

FLASHES = [("box_open", 4, 0, "box"), ("level_up", 12, 1, "star"), ("noble_enter", 7, 1, "crown"),
           ("rocket_fly", 3, 0, "rocket")]

# id, name, play type, count, range, animation, version
RECREATIONS = [
    ("R1", "掷骰子", "1", "1", "1-6", "dice.zip", "3"), ("R2", "抛硬币", "1", "1", "0-1", "toss", "2"),
    ("R3", "石头剪刀布", "1", "1", "1-3", "fingers.zip", "5"), ("M1", "亲亲", "2", "1", "", "kiss", "1"),
    ("M2", "扔番茄", "2", "5", "", "tomato.zip", "4"), ("M3", "撒花", "2", "3", "", "petals", "1"),
    ("W1", "许愿", "3", "1", "1-100", "wish", "2"), ("W2", "抽签", "3", "1", "1-64", "lots.zip", "1"),
    ("X1", "内测特效", "9", "1", "", "trial", "1"),
]


def effects():
    table("FlashConfig", "flashName flashVersion flashPrevDownload",
          [[name, str(version), str(early)] for name, version, early, _ in FLASHES])
    for name, version, _, shape in FLASHES:
        put("app/logo/flash/" + name, archive(name, shape, version))

    table("RecreationConfigNew", "id name playType num range flashName flashVersion",
          [list(row) for row in RECREATIONS])
    for number, (effect, *_, flash, _) in enumerate(RECREATIONS):
        put(f"app/logo/magic/{effect}.png", picture("face", number, 96))
        put("app/logo/magic/" + flash, archive(flash.partition(".")[0], "face", number))

    awards = ["金话筒", "银话筒", "铜话筒", "人气王", "土豪榜首", "守护之星", "对战冠军", "年度主播"]
    table("CS_PlatAwardEffect", "id sort name flash icon descs",
          [[n, 10 * (9 - n), name, FLASHES[n % 4][0], f"award_{n}.png", f"获得{name}时播放"]
           for n, name in enumerate(awards, 1)])
    for number in range(1, len(awards) + 1):
        put(f"app/images/activity/effect/award_{number}.png", picture("crown", number, 64))
    activities = [("annual", "日榜第一"), ("annual", "总榜第一"), ("anniversary", "同庆之星"), ("century", "先行者")]
    table("ActivityAwardEffect", """id rankType effectId name effectIcon availableTime availableGapTime
          activityId remark""",
          [[f"A{n}", str(n % 2 + 1), str(n), name, f"award_{n}.png", 86400 * n, 3600, activity, "由运营配置"]
           for n, (activity, name) in enumerate(activities, 1)])


# ---- writing and checking ----------------------------------------------------------------------

def make():
    for part in (gifts, levels, decorations, chat, presentation, privileges, effects):
        part()
    missing = [key for key in VERSIONS if "app/resources/" + key not in FILES]
    unlike = set(re.findall(r"^ +(\w+) = \d+,$", CATALOGUE.read_text(encoding="utf-8"), re.M)) ^ set(VERSIONS)
    if missing or unlike:
        raise ValueError(f"tables without a file: {missing}, without a version or a kind: {sorted(unlike)}")
    put("app/versions.json", (json.dumps({"versions": VERSIONS}, indent=1) + "\n").encode())


def content_of(data):
    """What two equal files share: of an archive its entries, since compressed bytes vary with the zlib."""
    if not data.startswith(b"PK"):
        return data
    try:
        with zipfile.ZipFile(io.BytesIO(data)) as packed:
            return [(entry.filename, entry.date_time, packed.read(entry)) for entry in packed.infolist()]
    except (zipfile.BadZipFile, zlib.error):
        return data


def present():
    return {path.relative_to(CONTENT).as_posix() for path in CONTENT.rglob("*") if path.is_file()}


def check():
    """The first difference between the folder and what would be written, or None."""
    there = present()
    for path in sorted(there | FILES.keys()):
        if path not in there:
            return f"{path}: missing"
        if path not in FILES:
            return f"{path}: does not belong here"
        if content_of((CONTENT / path).read_bytes()) != content_of(FILES[path]):
            return f"{path}: differs"
    return None


def write():
    for path in present() - FILES.keys():
        (CONTENT / path).unlink()
    for path, data in FILES.items():
        (CONTENT / path).parent.mkdir(parents=True, exist_ok=True)
        (CONTENT / path).write_bytes(data)


def main(arguments):
    if arguments not in ([], ["--check"]):
        print("usage: make_content.py [--check]", file=sys.stderr)
        return 2
    make()
    if not arguments:
        write()
        print(f"{len(FILES)} files, {sum(map(len, FILES.values()))} bytes")
        return 0
    difference = check()
    if difference:
        print(f"make_content.py: {difference}", file=sys.stderr)
    return 1 if difference else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
