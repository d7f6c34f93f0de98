"""What every text must be like, whatever its language.

The rules follow from the windows, buffers and keys that the texts are for. They are written without
looking at string_ids.h or at the files of the languages, so that a mistake there is found here.
"""

from collections import namedtuple

# roles: what the text is used as. A text with two roles must keep the rules of both.
# placeholders: how many "%s" it has.
# limit: the greatest length in UTF-16 units, after the placeholders have been filled.
Rule = namedtuple("Rule", "roles placeholders limit")

# The monitor looks up the number at the beginning of a printer's name as a text id. A printer
# called "12th floor" would show text 12, so small numbers must have no text.
FIRST_ID = 107

# Longest arguments, in UTF-16 units, that the monitor inserts. The media name and the text for an
# unknown value are texts themselves: a longer one in a language counts with its own length.
PRINTER_NAME_UNITS = 220
PART_NUMBER_UNITS = 31
MEDIA_NAME_UNITS = 40
STEP_NUMBER_UNITS = 1
ARGUMENT_UNITS = {
    107: PRINTER_NAME_UNITS,
    130: PART_NUMBER_UNITS,
    154: MEDIA_NAME_UNITS,
    223: PART_NUMBER_UNITS,
    373: STEP_NUMBER_UNITS,
    374: STEP_NUMBER_UNITS,
}

# The same for translators, in words.
INSERTED = {
    107: "the name of the printer",
    130: "a number, a question mark or dashes",
    154: "the paper type in use, then the paper type needed",
    223: "the part number, or the text for what is not known",
    **dict.fromkeys((373, 374), "the number of the step, 1 to 3"),
}
# Letters for which a control has room in the usual scripts. Its buffer has room for many more.
ROOM = {
    **dict.fromkeys((156, 247), 17),
    **dict.fromkeys((218, 248), 36),
    **dict.fromkeys((1036, 1063, 1067), 19),
    115: 40,
    **dict.fromkeys((114, 116, 117, 122, 123, 124, 126, 127, 128), 44),
    130: 66,
    **dict.fromkeys((177, 178, 180), 240),
}

# The dialog procedures compare with these letters in every language, so each translation must mark
# exactly this letter.
KEY_LETTERS = {156: "O", 158: "C", 218: "R", 247: "H", 248: "U"}
# Buttons whose key each language chooses; the buttons of one dialog need different ones.
FREE_KEY_DIALOGS = ((1036, 1063), (1067,))

SINGLE_LINE_ROLES = {"title", "caption", "button", "link", "snooze", "media"}
# The sentence is split into a link (1051) and the rest (1031). A language that needs another word
# order puts everything into the link and leaves the rest blank.
MAY_BE_ONE_BLANK = {1031}
SNOOZE_IDS = range(114, 129)  # not every number in this range is a text

# Unicode categories of characters that nobody sees: control, format, private and unassigned ones.
UNSEEN = {"Cc", "Cf", "Co", "Cn"}
# Words of these languages may need the two joiners: Hindi, Bengali, Tamil, Telugu, Marathi,
# Gujarati, Kannada, Malayalam and Punjabi.
JOINERS = "\u200c\u200d"
USE_JOINERS = {0x439, 0x845, 0x449, 0x44A, 0x44E, 0x447, 0x44B, 0x44C, 0x446}

# The font in which dialogs are tested and pictured. languages.tsv names one for each script it lacks. What
# neither has is a slip of the keyboard, or would be a box on the screen too.
DIALOG_FONT = "DejaVu Sans Condensed"

# An alert must not sound as if the reader had done something wrong.
FORBIDDEN_IN_ENGLISH = ("error", "failure", "illegal", "invalid", "abort")

# id, roles, placeholders, limit
# fmt: off
_ROWS = (
    # Title and buttons
    (107, "title", 1, 259),
    (156, "button", 0, 63),
    (158, "button", 0, 63),
    (247, "button", 0, 63),
    (248, "button", 0, 63),
    (218, "button / link", 0, 63),
    (217, "link", 0, 259),
    # Paper, doors and jams
    (149, "headline", 0, 1023),
    (150, "detail", 0, 1023),
    (351, "detail", 0, 1023),
    (160, "headline", 0, 1023),
    (154, "detail", 2, 511),
    (153, "message", 0, 1023),
    (231, "headline", 0, 1023),
    (220, "headline", 0, 1023),
    (145, "message", 0, 1023),
    (146, "message", 0, 1023),
    (232, "headline / message", 0, 1023),
    (233, "headline / message", 0, 1023),
    (234, "headline / message", 0, 1023),
    (133, "message", 0, 1023),
    # Toner and cartridge
    (284, "headline", 0, 1023),
    (285, "headline", 0, 1023),
    (355, "headline", 0, 1023),
    (281, "detail / help", 0, 511),
    (268, "detail / help", 0, 511),
    (354, "detail / help", 0, 511),
    (357, "caption", 0, 259),
    (358, "caption", 0, 259),
    (359, "caption", 0, 259),
    (213, "headline", 0, 1023),
    (212, "headline", 0, 1023),
    (352, "headline", 0, 1023),
    (353, "headline / message", 0, 1023),
    (363, "headline", 0, 1023),
    (222, "headline", 0, 1023),
    (210, "detail / message", 0, 511),
    (223, "caption", 1, 511),
    (130, "caption", 1, 511),
    (142, "caption", 0, 511),
    (250, "headline", 0, 1023),
    (347, "headline", 0, 1023),
    (360, "link", 0, 259),
    (172, "message", 0, 1023),
    (179, "message", 0, 1023),
    (141, "message", 0, 1023),
    (147, "message", 0, 1023),
    (159, "message", 0, 1023),
    (163, "message", 0, 1023),
    (171, "message", 0, 1023),
    # Snooze
    (114, "snooze", 0, 259),
    (115, "snooze", 0, 259),
    (116, "snooze", 0, 259),
    (117, "snooze", 0, 259),
    (122, "snooze", 0, 259),
    (123, "snooze", 0, 259),
    (124, "snooze", 0, 259),
    (126, "snooze", 0, 259),
    (127, "snooze", 0, 259),
    (128, "snooze", 0, 259),
    (356, "message", 0, 511),
    # Printer problems
    (165, "message", 0, 1023),
    (166, "headline", 0, 1023),
    (167, "headline", 0, 1023),
    (168, "headline", 0, 1023),
    (169, "headline", 0, 1023),
    (170, "headline", 0, 1023),
    (173, "headline", 0, 1023),
    (175, "headline", 0, 1023),
    (1009, "headline", 0, 1023),
    (1008, "headline", 0, 1023),
    (125, "detail / message", 0, 1023),
    (119, "message", 0, 1023),
    # Manual two-sided printing
    (181, "caption", 0, 259),
    (176, "headline / help", 0, 1023),
    (177, "detail", 0, 1023),
    (178, "detail", 0, 1023),
    (180, "detail", 0, 1023),
    # Fax
    (350, "headline", 0, 1023),
    (348, "detail", 0, 1023),
    (349, "detail / link", 0, 259),
    # Help texts
    (261, "help", 0, 2047),
    (262, "help", 0, 2047),
    (265, "help", 0, 2047),
    (266, "help", 0, 2047),
    (267, "help", 0, 2047),
    (269, "help", 0, 2047),
    (270, "help", 0, 2047),
    (271, "help", 0, 2047),
    (274, "help", 0, 2047),
    (276, "help", 0, 2047),
    (277, "help", 0, 2047),
    (278, "help", 0, 2047),
    (279, "help", 0, 2047),
    # Media types
    (301, "media", 0, 127),
    (302, "media", 0, 127),
    (303, "media", 0, 127),
    (304, "media", 0, 127),
    (305, "media", 0, 127),
    (306, "media", 0, 127),
    (307, "media", 0, 127),
    (308, "media", 0, 127),
    (309, "media", 0, 127),
    (310, "media", 0, 127),
    (311, "media", 0, 127),
    (312, "media", 0, 127),
    (313, "media", 0, 127),
    (314, "media", 0, 127),
    (315, "media", 0, 127),
    (316, "media", 0, 127),
    (317, "media", 0, 127),
    (318, "media", 0, 127),
    (319, "media", 0, 127),
    (320, "media", 0, 127),
    (321, "media", 0, 127),
    # Cartridge check pages
    (1064, "title", 0, 259),
    (1065, "caption", 0, 259),
    (1028, "headline", 0, 1023),
    (1029, "detail", 0, 1023),
    (1051, "link", 0, 259),
    (1031, "caption", 0, 259),
    (1036, "button", 0, 63),
    (1063, "button", 0, 63),
    (1066, "title", 0, 259),
    (1037, "headline", 0, 1023),
    (1038, "detail", 0, 1023),
    (1039, "headline", 0, 1023),
    (1040, "detail", 0, 1023),
    (1041, "headline", 0, 1023),
    (1042, "detail", 0, 1023),
    (1047, "headline", 0, 1023),
    (1048, "detail", 0, 1023),
    (1049, "link", 0, 259),
    (1067, "button", 0, 63),
    # Further texts
    (364, "caption", 0, 259),
    (366, "caption", 0, 259),
    (367, "caption", 0, 259),
    (368, "caption", 0, 259),
    (369, "caption", 0, 259),
    (370, "caption", 0, 259),
    (371, "caption", 0, 259),
    (372, "caption", 0, 259),
    (373, "caption", 1, 259),
    (374, "caption", 1, 259),
    (375, "caption", 0, 259),
)
# fmt: on


def _rules(rows):
    rules = {}
    for text_id, roles, placeholders, limit in rows:
        assert text_id not in rules, text_id
        rules[text_id] = Rule(frozenset(roles.split(" / ")), placeholders, limit)
    return rules


RULES = _rules(_ROWS)
MEDIA_IDS = tuple(text_id for text_id, rule in RULES.items() if "media" in rule.roles)
NOT_KNOWN = 364
# Texts of the same language that are inserted into a text.
ARGUMENT_TEXTS = {130: (NOT_KNOWN,), 154: MEDIA_IDS, 223: (NOT_KNOWN,)}
