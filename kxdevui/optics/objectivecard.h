// The cards of one nosepiece: when they come and go, and how they are drawn.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include <kxdevui/framework/ui_window.h>
#include <kxdevui/optics/objectivecard_rules.h>

namespace kx::ui {

// One a panel; there is one card at a time in the process.
class ObjectiveCards {
public:
    // What the panel tells of itself.
    struct Panel {
        // The panel, which Life knows; what it is asked.
        const void* object;
        std::function<HWND(long)> button;  // of a position; null for one that is not there
        std::function<long()> current;     // from which a click leads; -1 when nobody knows, and where none does
        std::function<SKxObjectiveCard(long)> held;  // what the panel knows of a position that is there
    };
    // Off at first.
    explicit ObjectiveCards(Panel panel) : m_panel(std::move(panel)) {}
    ObjectiveCards(const ObjectiveCards&) = delete;
    ObjectiveCards& operator=(const ObjectiveCards&) = delete;
    ~ObjectiveCards() { GiveToolTipsBack(), Hide(); }

    // See CKxDevUI_Nosepiece::SetCards.
    void Set(std::optional<SKxObjectiveCards> host);
    bool AreOn() const noexcept { return m_host.has_value(); }

    // What the pointer, the focus and the time do, as the panel's window hears it (position -1), or the button of a
    // position. The host is asked, who may end the panel.
    void Hear(HWND panel, const Message& message, long position);

    // Shows the card of a position, where there is something to be said; hides the panel's, whichever it is.
    bool Show(long position);
    void Hide() const;

private:
    // A card as it is to be now, and whether it warns; empty when the panel has gone, or has no cards any more.
    std::optional<CardText> Ask(long position) const;
    long DisabledAt(HWND panel, LPARAM point) const;
    void Come(HWND panel, long position);
    void Leave(HWND panel);
    void LeaveDisabled(HWND panel);
    void TakeToolTips(HWND button);
    void GiveToolTipsBack();

    Panel m_panel;
    std::optional<SKxObjectiveCards> m_host;
    long m_position = -1;      // that the pointer, or a key, has come to
    bool m_waiting = false;    // whether its card is still to come
    HWND m_toolTip = nullptr;  // the window that is off meanwhile
    LPARAM m_pointer = 0;      // where that was
};

}  // namespace kx::ui
