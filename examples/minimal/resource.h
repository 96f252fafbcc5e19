#pragma once
#define IDD_LAMP L"IDD_LAMP"
#define IDC_LAMP_ON 101
#define IDC_LAMP_TEXT 102
#define IDC_LAMP_FULL 103
