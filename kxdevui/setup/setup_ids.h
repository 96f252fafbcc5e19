// The controls of the setup dialogs. Read by the resource compiler as well.
#pragma once

#define IDC_SETUP_TABLE 2301
#define IDC_SETUP_FIND 2303
#define IDC_SETUP_MAGNIFICATION 2304
#define IDC_SETUP_NA 2305
#define IDC_SETUP_GROUP 2306
#define IDC_SETUP_LIST 2307
#define IDC_SETUP_DETAILS 2308
#define IDC_SETUP_TABLE_LABEL 2309
#define IDC_SETUP_LIST_LABEL 2310
