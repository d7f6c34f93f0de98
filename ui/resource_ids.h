#pragma once

// Ids of the program's own resources: dialog templates, controls, bitmaps and icons. The resource
// compiler reads this file too: macros and comments, nothing else. Each kind of resource has a name
// space of its own, so the same number may stand in several. The numbers are kept: see decision
// 0012. String ids: strings/string_ids.h.

// Dialog templates
#define IDD_ALERT 137
#define IDD_MANUAL_FEED 138
#define IDD_MANUAL_DUPLEX 139
#define IDD_CARTRIDGE_CHECK 153
#define IDD_CARTRIDGE_CHECK_DETAILS 154
#define IDD_SUPPLIES_ALERT 210

// Controls of the alerts
#define IDC_ALERT_CANCEL 2
#define IDC_ALERT_OK 130
#define IDC_ALERT_HELP 131
#define IDC_ALERT_MESSAGE 132
#define IDC_ALERT_PICTURE 133
#define IDC_ALERT_RECYCLE 134
#define IDC_ALERT_SETTINGS 135
#define IDC_ALERT_BANNER 236
#define IDC_ALERT_ICON 1002
#define IDC_ALERT_HEADLINE 1004
#define IDC_ALERT_SHOP_LINK 1005
#define IDC_ALERT_RETURNS_LINK 1006
#define IDC_ALERT_FRAUD_LINK 1007
#define IDC_SNOOZE_CHOICE 1008
#define IDC_SNOOZE_LABEL 1009
#define IDC_ALERT_DETAIL 1012
#define IDC_ALERT_SHOP 1018

// Controls of the supplies alert
#define IDC_SUPPLIES_PICTURE 136
#define IDC_SUPPLIES_CONDITION 137
#define IDC_SUPPLIES_NAME 1059
#define IDC_SUPPLIES_DETAIL 1060
#define IDC_SUPPLIES_PAGES 1061
#define IDC_SUPPLIES_COMMENT 1062

// Controls of the manual duplex alert
#define IDC_DUPLEX_PICTURE_1 230
#define IDC_DUPLEX_PICTURE_2 231
#define IDC_DUPLEX_PICTURE_3 232
#define IDC_DUPLEX_TITLE 1014
#define IDC_DUPLEX_STEP_1 1015
#define IDC_DUPLEX_STEP_2 1016
#define IDC_DUPLEX_STEP_3 1017
#define IDC_DUPLEX_ICON_1 1021
#define IDC_DUPLEX_ICON_2 1022
#define IDC_DUPLEX_ICON_3 1023

// Controls of the cartridge check and of its details
#define IDC_CHECK_CANCEL 2
#define IDC_CHECK_HEADING 1028
#define IDC_CHECK_EXPLANATION 1029
#define IDC_CHECK_LEARN_MORE_REST 1031
#define IDC_CHECK_SUBMIT 1036
#define IDC_CHECK_LEARN_MORE 1051
#define IDC_CHECK_DECLINE 1063
#define IDC_DETAILS_DONE 1
#define IDC_DETAILS_TEXT_1 1037
#define IDC_DETAILS_TEXT_2 1038
#define IDC_DETAILS_TEXT_3 1039
#define IDC_DETAILS_TEXT_4 1040
#define IDC_DETAILS_TEXT_5 1041
#define IDC_DETAILS_TEXT_6 1042
#define IDC_DETAILS_TEXT_7 1047
#define IDC_DETAILS_TEXT_8 1048
#define IDC_DETAILS_PRIVACY_LINK 1049

// Icons
#define IDI_PROGRAM 107
#define IDI_STEP_1 134
#define IDI_STEP_2 135
#define IDI_STEP_3 136

// Bitmaps: severity and condition
#define IDB_INFORMATION 148
#define IDB_STOP 149
#define IDB_WARNING 150
#define IDB_NEEDS_ATTENTION 207
#define IDB_UNKNOWN_CARTRIDGE 208
#define IDB_CARTRIDGE 209

// Bitmaps: banner and button faces
#define IDB_PROGRAM 156
#define IDB_BANNER 163
#define IDB_OK_NORMAL 166
#define IDB_OK_PRESSED 167
#define IDB_HELP_PRESSED 175
#define IDB_HELP_NORMAL 176
#define IDB_SHOP_PRESSED 177
#define IDB_SHOP_NORMAL 178
#define IDB_SPARE_PRESSED 179
#define IDB_SPARE_NORMAL 180
#define IDB_RECYCLE_NORMAL 211
#define IDB_RECYCLE_PRESSED 212

// Bitmaps: the printer. K is the K7400 family, the others stand for any other printer.
#define IDB_JAM_INSIDE 182
#define IDB_DUPLEX_1 186
#define IDB_DUPLEX_2 187
#define IDB_DUPLEX_3 188
#define IDB_REAR_JAM 196
#define IDB_REAR_JAM_K 197
#define IDB_LOAD_PAPER 198
#define IDB_LOAD_PAPER_K 199
#define IDB_CLOSE_DOOR 200
#define IDB_CLOSE_DOOR_K 201
#define IDB_DUPLEX_3_K 202
#define IDB_DUPLEX_1_K 203
#define IDB_DUPLEX_2_K 204
#define IDB_PRINTER 205
#define IDB_PRINTER_K 206
