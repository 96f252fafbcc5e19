// The setup dialogs: which objectives, filters and parts of a condenser stand where.
//
// Each is a modal dialog with a table of the positions. Something else is put into the position that is selected there
// by choosing it from a list, which is searched by typing parts of a name ("60 oil") and by what the database knows.
// Remarks tell of empty and double positions, of a dry objective between immersion ones, of what is not parfocal and of
// what nobody knows; they forbid nothing.
//
// OK hands the host all that has changed, in one record. The host accepts it, or refuses it with a reason, which is
// told; then the dialog stays open, with the row that the host points at selected, and OK asks again. Nothing is asked
// when nothing has changed. Cancel, Escape and the close box leave all as it was. The dialogs change and move nothing
// themselves.
//
// The functions return whether a record was accepted: also when the host has ended the dialog while it was asked.
// False, and logged, when there is no such device, or no callback; false when the dialog could not be shown. A callback
// that throws refuses. A device of no positions has an empty table; of more than 1,000, the first 1,000 are shown.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include <kxdevices/kx_device.h>
#include <kxdevui/framework/kxdevui_api.h>
#include <kxfilters/kx_objectives.h>
#include <kxsystem/kx_string.h>

// How a host refuses a record.
struct SKxSetupRefusal {
    bool refused = false;
    CKxStringW reason;   // for the user; empty: that the host refuses
    long position = -1;  // the position that it is about; any that is not there is none
};

// One position that is to have something else in it.
template <class Item>
struct SKxSetupChange {
    long position = 0;
    Item before;
    Item after;
};

// Objectives in the positions of a nosepiece. Where nothing stands, key and name are empty. Of an objective that the
// database does not have, name and key are the device's.
struct SKxObjectiveSetup {
    CDMApi_LogDevId device = 0;
    std::vector<SKxSetupChange<SKxDDBObjectiveItem>> changes = {};  // by position
};

// Filters in the positions of a filter changer, by their names; an empty name is an empty position. A name that is in
// no list can be typed.
struct SKxFilterSetup {
    CDMApi_LogDevId device = 0;
    std::vector<SKxSetupChange<CKxStringW>> changes = {};  // by position
};

// Parts in the positions of a condenser; keys and names as with objectives.
struct SKxCondenserSetup {
    std::vector<SKxSetupChange<SKxDDBCondenserItem>> changes = {};  // by position
};

// Asked for each record. The host may change its devices, end the dialog's owner, and show message boxes of its own.
using KxObjectiveSetupCallback = std::function<void(const SKxObjectiveSetup& setup, SKxSetupRefusal& refusal)>;
using KxFilterSetupCallback = std::function<void(const SKxFilterSetup& setup, SKxSetupRefusal& refusal)>;
using KxCondenserSetupCallback = std::function<void(const SKxCondenserSetup& setup, SKxSetupRefusal& refusal)>;

// "Nosepiece & Objectives": of a registered nosepiece, with the objectives of the database.
KXDEVUI_API bool ShowSetupDialog(HWND owner, CDMApi_LogDevId nosepiece, const KxObjectiveSetupCallback& accept);

// "Filter Changer & Filters": of a registered filter changer, with the names of common filters and those in use.
KXDEVUI_API bool ShowSetupDialog_Filter(HWND owner, CDMApi_LogDevId filterChanger, const KxFilterSetupCallback& accept);

// "Condenser & Condensers": with the parts of the database. No device tells of a condenser: `positions` are what stands
// in it, by key; empty is an empty position, and a key that the database does not have stands for a name.
KXDEVUI_API bool ShowSetupDialog_Condenser(HWND owner, const std::vector<CKxStringW>& positions,
                                           const KxCondenserSetupCallback& accept);
