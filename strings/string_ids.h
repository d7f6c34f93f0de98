#pragma once

// Ids of the texts in the localized strings library. string_tables.py reads this file too, so it
// holds macros and comments and nothing else, and translators read the comments. Every language's
// file in po has a text for every id; text_rules.py says what each text must be like. The numbers
// and the gaps between them stay (kept: see decision 0012). No id is below 107: the monitor looks
// up the number at the beginning of a printer's name as a text id. Ids of bitmaps, icons, templates
// and controls are counted separately, in ui/resource_ids.h. Five-digit numbers in the comments are
// the printer's status codes.
// clang-format off

// Title and buttons: the frame of every alert
#define IDS_TITLE                            107  // window title; one %s, the printer name
#define IDS_OK                               156  // button 130 without a caption of its own; key O
#define IDS_CONTINUE                         158  // never shown, never empty; key C
#define IDS_SHOP_ONLINE                      217  // link to the shop, in a template that has one
#define IDS_RETURN_AND_RECYCLE               218  // button 134 and the returns link; key R
#define IDS_HELP                             247  // button 131; key H
#define IDS_SHOP_FOR_SUPPLIES                248  // button 1018; key U

// Paper, doors and jams
#define IDS_DUPLEX_JAM                       133  // message, 42003 and 42004
#define IDS_STATUS_DOOR_OPEN                 145  // status table, 40020
#define IDS_STATUS_CARTRIDGE_DOOR_OPEN       146  // status table, 40021
#define IDS_PAPER_OUT                        149  // headline, 41100 to 41199
#define IDS_PAPER_OUT_DETAIL_K               150  // detail of paper out, K7400 family
#define IDS_STATUS_LOAD_INPUT_SLOT           153  // status table, 30119
#define IDS_LOAD_MEDIA_DETAIL                154  // detail; two %s: media in use, media needed
#define IDS_LOAD_PAPER                       160  // headline, 41000 to 41399 but 41100 to 41199
#define IDS_CARTRIDGE_DOOR_OPEN              220  // headline, 40021
#define IDS_DOOR_OPEN                        231  // headline, 40020
#define IDS_REAR_JAM                         232  // headline, 42002
#define IDS_TRAY_JAM                         233  // headline, 42001
#define IDS_JAM_INSIDE                       234  // headline, 42000; message, 42100 and 42300
#define IDS_PAPER_OUT_DETAIL                 351  // detail of paper out, other printers

// Toner and cartridge
#define IDS_PAGES_REMAINING                  130  // pages line; one %s, the number, "?" or "--"
#define IDS_STATUS_NO_CARTRIDGE              141  // status table, 40600
#define IDS_PAGES_COMMENT                    142  // comment under the supplies block
#define IDS_STATUS_CARTRIDGE_NOT_RECOGNIZED  147  // status table, 40010
#define IDS_STATUS_TONER_LOW                 159  // status table, 10209 and 10219
#define IDS_STATUS_CARTRIDGE_EMPTY           163  // status table, 10300
#define IDS_STATUS_NOT_QV_CARTRIDGE          171  // status table, 10403 and 10407
#define IDS_RESEAT_CARTRIDGE                 172  // message, 10500
#define IDS_INSTALL_QV_CARTRIDGE             179  // message, 10511; status table, 10512
#define IDS_CARTRIDGE_MEMORY_DETAIL          210  // detail of 30017, 40010 and 40017
#define IDS_CARTRIDGE_NOT_ACCEPTED           212  // headline, 10512 and 40625
#define IDS_NO_CARTRIDGE                     213  // headline, 40600
#define IDS_CARTRIDGE_NOT_RECOGNIZED         222  // headline, 40010 and 30017
#define IDS_SUPPLIES_NAME                    223  // supplies line; one %s, the part number
#define IDS_GENUINE_CARTRIDGE                250  // headline of a new cartridge
#define IDS_TONER_VERY_LOW_DETAIL            268  // detail and help, 10219
#define IDS_TONER_LOW_DETAIL                 281  // detail and help, 10209
#define IDS_TONER_LOW                        284  // headline, 10209
#define IDS_TONER_VERY_LOW                   285  // headline, 10219
#define IDS_NEW_CARTRIDGE                    347  // new cartridge on a Simplified Chinese system
#define IDS_NOT_QV_CARTRIDGE                 352  // headline, 10403 and 10407
#define IDS_CARTRIDGE_USED_BEFORE            353  // headline, 40608, 40610, 40612 and 40614
#define IDS_CARTRIDGE_EMPTY_DETAIL           354  // detail and help, 10300
#define IDS_CARTRIDGE_EMPTY                  355  // headline, 10300
#define IDS_TONER_LOW_CAPTION                357  // caption of the help box, 10209
#define IDS_TONER_VERY_LOW_CAPTION           358  // caption of the help box, 10219
#define IDS_CARTRIDGE_EMPTY_CAPTION          359  // caption of the help box, 10300
#define IDS_CHECK_CARTRIDGE_LINK             360  // link to the cartridge check
#define IDS_CARTRIDGE_MEMORY_PROBLEM         363  // headline, 40017

// Snooze: the list of reminder times, and what is said when none is chosen
#define IDS_SNOOZE_CHOOSE                    114  // first entry of the list
#define IDS_SNOOZE_LABEL                     115  // label in front of the list
#define IDS_SNOOZE_1_HOUR                    116
#define IDS_SNOOZE_4_HOURS                   117
#define IDS_SNOOZE_1_DAY                     122
#define IDS_SNOOZE_2_DAYS                    123
#define IDS_SNOOZE_3_DAYS                    124
#define IDS_SNOOZE_1_WEEK                    126
#define IDS_SNOOZE_2_WEEKS                   127
#define IDS_SNOOZE_NEVER                     128
#define IDS_SNOOZE_NOTHING_CHOSEN            356  // message box

// Printer problems: the alerts of 30201 and 50003 to 50025
#define IDS_FAN_PROBLEM                      119  // message, 50006
#define IDS_LASER_BEAM_DETAIL                125  // detail, 50012
#define IDS_TURN_OFF_AND_ON                  165  // message of most of these alerts
#define IDS_PAGE_NOT_FINISHED                166  // headline, 30201
#define IDS_FUSER_PROBLEM                    167  // headline, 50003
#define IDS_COMMUNICATION_PROBLEM            168  // headline, 50007
#define IDS_FUSER_NOT_WARM                   169  // headline, 50008
#define IDS_PRINT_ENGINE_PROBLEM             170  // headline, 50025
#define IDS_LASER_SCANNER_PROBLEM            173  // headline, 50005
#define IDS_PAPER_FEED_PROBLEM               175  // headline, 50020
#define IDS_LASER_BEAM_PROBLEM              1008  // headline, 50012
#define IDS_INTERNAL_PROBLEM                1009  // headline, 50021, 50023 and 50024

// Manual two-sided printing: the alert of 40120 and 40121
#define IDS_DUPLEX_TITLE                     176  // title inside the window; help for 40120
#define IDS_DUPLEX_STEP_1                    177
#define IDS_DUPLEX_STEP_2                    178
#define IDS_DUPLEX_STEP_3                    180
#define IDS_DUPLEX_CAPTION                   181  // window title

// Fax: the alerts of 100000 and 100001
#define IDS_FAX_DETAIL                       348  // detail, 100000
#define IDS_FAX_OPEN_LINK                    349  // detail, 100001: a link
#define IDS_FAX_RECEIVED                     350  // headline

// Help texts, shown in a message box
#define IDS_HELP_JAM                         261  // 42000 to 42002
#define IDS_HELP_DOOR                        262  // 40020 and 40021
#define IDS_HELP_LOAD_PAPER                  265  // 41000 to 41399, 41900 and 30119
#define IDS_HELP_CARTRIDGE_NOT_ACCEPTED      266  // 10512 and 40625
#define IDS_HELP_NOT_QV_CARTRIDGE            267  // 10403 and 10407
#define IDS_HELP_CARTRIDGE_USED_BEFORE       269  // 40608, 40610, 40612 and 40614
#define IDS_HELP_CARTRIDGE_MEMORY            270  // 30017, 40010 and 40017
#define IDS_HELP_NO_CARTRIDGE                271  // 40600
#define IDS_HELP_PRINTER_PROBLEM             274  // 50003, 50007, 50008 and 50025
#define IDS_HELP_LASER_SCANNER               276  // 50005
#define IDS_HELP_READ_CONTROL_PANEL          277  // status 277, which no alert has
#define IDS_HELP_NEEDS_ATTENTION             278  // every other status
#define IDS_HELP_DUPLEX_JAM                  279  // 42004

// Media types: 300 + the media code
#define IDS_MEDIA_PLAIN                      301  // "Normal" and every unknown name
#define IDS_MEDIA_QV_MULTIPURPOSE            302
#define IDS_MEDIA_QV_OFFICE                  303
#define IDS_MEDIA_QV_ALL_IN_ONE              304
#define IDS_MEDIA_QV_JL                      305
#define IDS_MEDIA_PREMIUM                    306
#define IDS_MEDIA_LIGHT                      307
#define IDS_MEDIA_MIDWEIGHT                  308
#define IDS_MEDIA_THICK                      309  // "Thick" and "Cardstock"
#define IDS_MEDIA_EXTRA_THICK                310
#define IDS_MEDIA_TRANSPARENCY               311
#define IDS_MEDIA_LABELS                     312
#define IDS_MEDIA_LETTERHEAD                 313
#define IDS_MEDIA_ENVELOPES                  314
#define IDS_MEDIA_PREPRINTED                 315
#define IDS_MEDIA_PREPUNCHED                 316
#define IDS_MEDIA_COLORED                    317
#define IDS_MEDIA_BOND                       318
#define IDS_MEDIA_RECYCLED                   319
#define IDS_MEDIA_ROUGH                      320
#define IDS_MEDIA_VELLUM                     321

// Cartridge check and its details: a control's text has the id of the control
#define IDS_CHECK_HEADING                   1028
#define IDS_CHECK_EXPLANATION               1029
#define IDS_CHECK_LEARN_MORE_REST           1031  // rest of the learn-more line, or one blank
#define IDS_CHECK_SUBMIT                    1036  // button
#define IDS_DETAILS_ABOUT                   1037
#define IDS_DETAILS_ABOUT_TEXT              1038
#define IDS_DETAILS_CARTRIDGE               1039
#define IDS_DETAILS_CARTRIDGE_TEXT          1040
#define IDS_DETAILS_PRINTER                 1041
#define IDS_DETAILS_PRINTER_TEXT            1042
#define IDS_DETAILS_PRIVACY                 1047
#define IDS_DETAILS_PRIVACY_TEXT            1048
#define IDS_DETAILS_PRIVACY_LINK            1049  // link
#define IDS_CHECK_LEARN_MORE                1051  // link, first half of the learn-more line
#define IDS_CHECK_DECLINE                   1063  // button
#define IDS_CHECK_TITLE                     1064  // window title
#define IDS_CHECK_BANNER                    1065  // white text on the banner
#define IDS_DETAILS_TITLE                   1066  // window title
#define IDS_DETAILS_DONE                    1067  // button

// Further texts: an unknown value, and names that screen readers speak
#define IDS_NOT_KNOWN                        364  // for an unknown part number or page count
#define IDS_NAME_INFORMATION                 366  // icon 1002, information
#define IDS_NAME_STOPPED                     367  // icon 1002, stop
#define IDS_NAME_WARNING                     368  // icon 1002, warning
#define IDS_NAME_PRINTER_PICTURE             369  // picture 133
#define IDS_NAME_SUPPLIES_PICTURE            370  // picture 136
#define IDS_NAME_NEEDS_ATTENTION             371  // condition icon 137
#define IDS_NAME_NOT_QV_CARTRIDGE            372  // condition icon 137, not a QV cartridge
#define IDS_NAME_STEP                        373  // icons 1021 to 1023; %s: 1 to 3
#define IDS_NAME_STEP_PICTURE                374  // pictures 230 to 232; %s: 1 to 3
#define IDS_NAME_LINK_ACTION                 375  // what a link does; a verb
// clang-format on
