// The controls of the Z stack panel and of its confirmation dialog. Read by the resource compiler as well.
#pragma once

// Stack types
#define IDC_ZS_TYPE_ENDS 1255
#define IDC_ZS_TYPE_SYMMETRIC 1257
#define IDC_ZS_TYPE_ASYMMETRIC 1258

// Positions
#define IDC_ZS_TOP 1251
#define IDC_ZS_HOME 1252
#define IDC_ZS_BOTTOM 1253
#define IDC_ZS_RELATIVE 1254
#define IDC_ZS_EDIT_TOP 1260
#define IDC_ZS_EDIT_MIDDLE 1261
#define IDC_ZS_EDIT_BOTTOM 1262

// Step and number of steps
#define IDC_ZS_STEP_LABEL 1268
#define IDC_ZS_EDIT_STEP 1263
#define IDC_ZS_STEP_UNIT 1269
#define IDC_ZS_SUGGESTED 1270
#define IDC_ZS_EDIT_STEPS 1266
#define IDC_ZS_STEPS_LABEL 1204

// Range: below and above, or the whole
#define IDC_ZS_BELOW_LABEL 1199
#define IDC_ZS_EDIT_BELOW 1264
#define IDC_ZS_BELOW_UNIT 1196
#define IDC_ZS_READOUT 1205
#define IDC_ZS_EDIT_ABOVE 1267
#define IDC_ZS_ABOVE_UNIT 1198
#define IDC_ZS_EDIT_RANGE 1265
#define IDC_ZS_RANGE_LABEL 1201
#define IDC_ZS_RANGE_UNIT 1202
#define IDC_ZS_READOUT_LABEL 1203

// The grips beside the scale, which no template has
#define IDC_ZS_GRIPS 1256

// Z device
#define IDC_ZS_DEVICE_LABEL 1271
#define IDC_ZS_DEVICE 1200
#define IDC_ZS_PIEZO 1259

// The confirmation dialog; the buttons' ids are its results
#define IDC_YNK_YES 2001
#define IDC_YNK_NO 2002
#define IDC_YNK_CANCEL 2003
#define IDC_YNK_QUESTION 1201
#define IDC_YNK_ICON 1401
#define IDC_YNK_KEEP 2201
