#include "setups.h"

#include <algorithm>
#include <utility>

#include <kxsystem/kx_number.h>

#include "held_values.h"
#include "text.h"

namespace {

using Setup = HeldValues::Setup;

// A setup has the same number whenever it is met again.
double NumberOf(const std::wstring& what, const Setup& setup) {
    std::vector<Setup>& known = Held().setups[what];
    const auto found = std::find(known.begin(), known.end(), setup);
    const auto number = found - known.begin();
    if (found == known.end()) known.push_back(setup);
    return static_cast<double>(number);
}

const Setup& SetupAt(const std::wstring& what, double number) {
    return Held().setups[what].at(static_cast<std::size_t>(number));
}

// "3: Plan Apo 20x → Plan Apo 60x", of the first positions that differ.
std::wstring InWords(const Setup& from, const Setup& to) {
    constexpr int most = 2;
    const auto named = [](const HeldValues::Place& place) { return place.name.empty() ? L"–" : place.name; };
    std::wstring text;
    int told = 0;
    for (std::size_t i = 0; i < std::min(from.size(), to.size()); ++i) {
        if (from[i] == to[i]) continue;
        if (++told > most) return text + L", …";
        text += (told > 1 ? L", " : L"") + std::to_wstring(i + 1) + L": " + named(from[i]) + L" → " + named(to[i]);
    }
    return text;
}

bool IsAllowed(const Setup&) { return true; }

// `read` tells what stands there now; `put` changes one position, once all `may` stand there.
template <class Read, class Put, class May>
Asked SetupAsked(Wish wish, const wchar_t* name, const Setup& wanted, Read read, Put put, May may) {
    wish.name = name;
    const std::wstring what = wish.what;
    wish.read = [=] { return std::optional(NumberOf(what, read())); };
    wish.ask = [=](double number) {
        const Setup before = read(), now = SetupAt(what, number);
        if (!may(now)) return false;
        for (std::size_t i = 0; i < std::min(before.size(), now.size()); ++i)
            if (!(before[i] == now[i]) && !put(i, now[i])) return false;
        return true;
    };
    wish.change = [=](double from, double to) { return InWords(SetupAt(what, from), SetupAt(what, to)); };
    const double number = NumberOf(what, wanted);
    return {std::move(wish), number};
}

}  // namespace

Asked SetupOf(CKxSimNosepiece& turret, const SKxObjectiveSetup& record) {
    const auto read = [&turret] {
        Setup setup;
        for (long i = 0; i < turret.GetPositionCount(); ++i) {
            CKxStringW name, magnification, key;
            turret.GetObjectiveName(i, name);
            turret.GetMagnification(name, magnification);
            turret.GetObjectiveKey(i, key);
            setup.push_back({name.str(), magnification.str(), key.str()});
        }
        return setup;
    };
    Setup wanted = read();
    for (const auto& each : record.changes) {
        std::wstring magnification;
        if (!each.after.key.IsEmpty()) magnification = KX_FormatNumber(L"%gx", each.after.magnification).str();
        wanted.at(static_cast<std::size_t>(each.position)) = {each.after.name.str(), magnification,
                                                              each.after.key.str()};
    }
    const auto put = [&turret](std::size_t position, const HeldValues::Place& place) {
        return turret.SetObjective(static_cast<long>(position), {place.name, place.magnification, place.key});
    };
    // Nothing would be left to look through.
    const auto may = [&turret](const Setup& setup) {
        long inLight = -1;
        const bool known = turret.GetPosition(inLight) && inLight >= 0 && inLight < std::ssize(setup);
        return !known || !setup[static_cast<std::size_t>(inLight)].name.empty();
    };
    return SetupAsked(WishOf(turret, L"setup"), L"Objectives", wanted, read, put, may);
}

Asked SetupOf(CKxSimFilterChanger& wheel, const SKxFilterSetup& record) {
    const auto read = [&wheel] {
        Setup setup;
        for (long i = 0; i < wheel.GetFilterCount(); ++i) {
            CKxStringW name;
            wheel.GetFilterName(i, name);
            setup.push_back({.name = name.str()});
        }
        return setup;
    };
    Setup wanted = read();
    for (const auto& each : record.changes)
        wanted.at(static_cast<std::size_t>(each.position)).name = each.after.str();
    const auto put = [&wheel](std::size_t position, const HeldValues::Place& place) {
        return wheel.SetFilter(static_cast<long>(position), place.name.c_str());
    };
    return SetupAsked(WishOf(wheel, L"setup"), L"Filters", wanted, read, put, IsAllowed);
}

Asked SetupOf(const SKxCondenserSetup& record) {
    const auto named = [](const CKxStringW& key) -> HeldValues::Place {
        SKxDDBCondenserItem item;
        CKxDeviceDatabase::DBGetCondenserParam(key, &item);
        return {.name = (item.name.IsEmpty() ? key : item.name).str(), .key = key.str()};
    };
    const auto read = [named] {
        Setup setup;
        for (const CKxStringW& key : Held().condenser)
            setup.push_back(named(key));
        return setup;
    };
    Setup wanted = read();
    for (const auto& each : record.changes)
        wanted.at(static_cast<std::size_t>(each.position)) = named(each.after.key);
    Wish wish;
    wish.what = L"condenser";
    const auto put = [](std::size_t position, const HeldValues::Place& place) {
        Held().condenser.at(position) = place.key.c_str();
        return true;
    };
    return SetupAsked(std::move(wish), L"Condenser", wanted, read, put, IsAllowed);
}
