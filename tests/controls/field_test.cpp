// Fields that take a number, and what hands expect of them: the same keys in every kind of field.
#include <light/lamps.h>
#include <zfocus/zstack_panel.h>

#include <kxdevui/controls/editbox_rules.h>
#include <kxdevui/controls/devgui_editbox_multivalue.h>
#include <kxdevui/controls/devgui_editbox_spin.h>
#include <kxdevui/framework/devgui_habits.h>
#include <kxdevui/framework/field_rules.h>
#include <kxdevui/framework/ui_answer.h>
#include <kxdevui/controls/devgui_table.h>
#include <kxdevui/light/devgui_modeshutter.h>

#include <diagnostics/random.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>
#include <list>
#include <optional>
#include <set>

namespace {

using namespace kx::test;

TEST(FieldRules, ReadWhatIsPasted) {
    // "-": nothing is taken.
    // clang-format off
    const std::tuple<const wchar_t*, wchar_t, const wchar_t*> rows[] = {
        {L"12,5\r\n", 0, L"12.5"}, {L"\u200E \u0661\u0662\u066B\u0965 ", 0, L"-"}, {L"  ", 0, L""},
        {L"\u0661\u0662\u066B\u0665", 0, L"12.5"}, {L"\u2212\uFF11\uFF0E\uFF15", 0, L"-1.5"}, {L"1,234.5", 0, L"-"},
        {L"1.5; 2,5", L';', L"1.5; 2.5"}, {L"1.5, 2.5", L',', L"1.5, 2.5"}, {L"1 2", 0, L"-"}, {L"5 mW", 0, L"-"},
        {L"1\u202E2", 0, L"-"}, {L"1\a2", 0, L"-"}};
    // clang-format on
    for (const auto& [pasted, separator, written] : rows)
        EXPECT_EQ(kx::ui::NumberPasted(pasted, separator).value_or(L"-"), written) << Narrow(pasted);
    EXPECT_EQ(kx::ui::NumberPasted(std::wstring(5'000'000, L'1'), 0), std::nullopt);
    EXPECT_EQ(kx::ui::Written({L"123", 2, 1}, L"45", 4), (kx::ui::FieldText{L"1453", 3, 3}));
    EXPECT_EQ(kx::ui::Written({L"123", 1, 2}, L"456", 4), (kx::ui::FieldText{L"123", 1, 2}));
    EXPECT_EQ(kx::ui::AllowedText({0, kInf, true, L"mW"}), L"0 mW or more");
    for (const wchar_t* wrong : {L"1e400", L"--5", L"1.2.3", L"abc", L"101"})
        EXPECT_FALSE(kx::ui::MayBeEntered(wrong, {0, 100})) << Narrow(wrong);
}

// What the hosts of all kinds of fields are told, and of that what has been entered.
struct Heard {
    void Entered(const char* how, double value) { record.Call(how, value), entered.push_back({value}); }
    Recorder record;
    std::vector<std::vector<double>> entered;
};

template <class Box>
struct HeardBox : Box {
    explicit HeardBox(Heard& all) : heard(all) {}
    void OnEnter() override { Enter("Enter"), Box::OnEnter(); }
    void OnKillFocus() override { Enter("Left"), Box::OnKillFocus(); }
    void Enter(const char* how) {
        std::list<double> values{this->GetNumber()};
        if constexpr (std::is_same_v<Box, CKxDevUI_EditBoxMultiValue>) this->GetValues(&values);
        heard.record.Call(how, Narrow(this->GetText().str()));
        heard.entered.emplace_back(values.begin(), values.end());
    }
    Heard& heard;
};

struct Laser : CKxDevUI_ColorSlider {
    Laser(Heard& all, HWND parent, int y, EColorSliderType type) : heard(all) {
        Fill(*this, Entries(101, 1), L"", 0, type, eColorSliderLayout_OneRow, 96);
        Create(parent, 10, y, -1, -1, true, true);
        SetPower(10, true), SetRange(0, 10);
    }
    HWND Edit() { return ::GetWindow(GetDlgItem(m_hWnd, 10001), GW_CHILD); }
    void OnPowerChanged(double& power, bool&) override { heard.Entered("Power", power); }
    void OnRangeChanged(double&, double& maximum) override { heard.Entered("Range", maximum); }
    Heard& heard;
};

struct Iris : CKxDevUI_ModeShutter {
    Iris(Heard& all, HWND parent) : heard(all) {
        device.SetMode(eKxShutterMode_Aperture), device.SetAperture(10), device.Tick();
        Init(device.GetLogDevId());
        Create(parent, 10, 220, 260, 36, true, true);
    }
    HWND Edit() { return GetWindow(GetDlgItem(m_slider, 10001), GW_CHILD); }
    void OnApertureChangeRequest(double aperture, bool&) override { heard.Entered("Aperture", aperture); }
    Heard& heard;
    Lamp device{eKxShutterType_Epi, Entries(101, 1)};
};

struct Cells : CKxDevUI_Table {
    Cells(Heard& all, RecordingParent& parent) : heard(all) {
        Create(parent.Window(), 10, 270, 200, 90, true, true);
        InsertColumn(L"Dose", 90, L"%g", true);
        const double dose = 10;
        InsertRow(&dose, 1, -1);
        parent.Answer(WM_NOTIFY, [this](WPARAM, LPARAM header) {
            if (reinterpret_cast<NMHDR*>(header)->code == LVN_ENDLABELEDITW) heard.Entered("Cell", GetCell(0, 0));
            return 0;
        });
    }
    HWND Open() { return StartEdit(0, 0), edit = GetFocus(); }
    HWND Edit() const { return edit; }
    HWND edit = nullptr;
    Heard& heard;
};

struct Series : Panel {
    Series(Heard& all, HWND parent) : Panel(all.record), heard(all) {
        Create(parent, &data, 300, 60, 0, 0, true, true);
        data.SetStep(10), data.SetObjective(0.8, 1), data.SetWavelength(500), UpdateGUI(RefreshAll);
    }
    void OnStepChanged(double step, bool) override { heard.Entered("Step", step); }
    void OnZStackChanged(unsigned int flags) override { Panel::OnZStackChanged(flags), UpdateGUI(flags); }
    Heard& heard;
    CKxZStackData data;
};

// A kind of field, and what is known of it without asking it.
struct Kind {
    const char* name;
    std::function<HWND()> open;  // by key
    std::string allowed;
    double least = 0, most = 100, coarseness = 0;
    wchar_t separator = 0;
    bool tellsOnlyNews = true, readsEmpty = false;
    std::size_t read = 100;  // characters
    const wchar_t* leavingKeys = L"";
};

// A field of each kind with 10 in it.
struct Fields : ControlTest {
    Fields() {
        const auto note = [](HWND, const wchar_t* text, const wchar_t*, UINT, int, void* all) -> int {
            return static_cast<Heard*>(all)->record.Call("Box", text), IDOK;
        };
        KX_SetMessageBoxHandler(note, &heard);
        KX_SetFieldHabits(parent.Window(), KxFieldHabits::AllOfLight());
        box.Create(Frame(10), 0, 0, 60, 20, true, true);
        spin.Create(Frame(50), 0, 0, 60, 20, true, true);
        list.Create(Frame(90), 0, 0, 60, 20, true, true);
        other = AddChild(parent.Window(), L"BUTTON", 7, {300, 10, 340, 30});
        box.SetNumber(10), spin.SetNumber(10), list.SetText(L"10");
        Pump();
        heard.record.Clear(), heard.entered.clear();
    }
    std::vector<Kind> Kinds() {
        const auto focus = [](HWND edit) { return [edit] { return SetFocus(edit), edit; }; };
        return {
            {"box", focus(box.GetEditWindow()), "0 to 100", 0, 100, 0, 0, false, true},
            {"spin", focus(spin.GetEditWindow()), "0 to 100", 0, 100, 0, 0, false, true},
            {"list", focus(list.GetEditWindow()), "0 to 100", 0, 100, 0, L';', false},
            {"slider", focus(slider.Edit()), "0 to 100 mW", 0, 100, 0.5},
            {"range", focus(range.Edit()), "0 to 100 mW", 0, 100, 0.5},
            {"mode shutter", focus(iris.Edit()), "0 to 100", 0, 100, 0.5},
            {"table", [this] { return cells.Open(); }, "a number", -kInf, kInf, 0, 0, true, true, 100, L"\n^"},
            {"Z panel", focus(series.Item(1263)), "0.001 \u00B5m or more", 0.0005, 1e9, 0, 0, true, false, 15, L"\n"}};
    }
    static kx::ui::FieldText Look(HWND edit) {
        DWORD first = 0, last = 0;
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
        return {TextOf(edit), first, last};
    }
    static std::string TextAndSelection(HWND edit) {
        const auto field = Look(edit);
        return Narrow(field.text).insert(field.last, "]").insert(field.first, "[");
    }
    std::string Answer() { return Narrow(TextOf(kx::ui::AnswerWindow())); }
    // ^ stands for Escape, @ for Ctrl+A, ~ for Ctrl+Z.
    void TypeKeys(HWND edit, const std::wstring& keys) {
        for (const wchar_t key : keys) {
            switch (key) {
            case L'^': Key(VK_ESCAPE); break;
            case L'@': Key('A', MOD_CONTROL); break;
            case L'~': Key('Z', MOD_CONTROL); break;
            default: key < 0x80 ? Type({&key, 1}) : void(SendMessageW(edit, WM_CHAR, key, 1));
            }
        }
    }
    void PutOnClipboard(const std::wstring& text) {
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
        lstrcpyW(static_cast<wchar_t*>(GlobalLock(memory)), text.c_str());
        GlobalUnlock(memory);
        OpenClipboard(parent.Window()), EmptyClipboard(), SetClipboardData(CF_UNICODETEXT, memory), CloseClipboard();
    }
    // Alone, so that Enter finds no field beside it.
    HWND Frame(int y) { return AddChild(parent.Window(), L"STATIC", 100 + y, {10, y, 250, y + 40}); }

    Heard heard;
    HeardBox<CKxDevUI_EditBox> box{heard};
    HeardBox<CKxDevUI_EditBoxSpin> spin{heard};
    HeardBox<CKxDevUI_EditBoxMultiValue> list{heard};
    Laser slider{heard, parent.Window(), 130, eColorSliderType_Gradient};
    Laser range{heard, parent.Window(), 170, eColorSliderType_Range};
    Iris iris{heard, parent.Window()};
    Cells cells{heard, parent};
    Series series{heard, parent.Window()};
    HWND other;
};

TEST_F(Fields, AnswerTheSameKeysAlike) {
    // As TypeKeys takes them; whether there is an answer.
    // clang-format off
    const std::tuple<const wchar_t*, const char*, bool> rows[] = {
        {L"", "[10]", false}, {L"42", "42[]", false}, {L"42^", "[10]", false}, {L"^^", "[10]", false},
        {L"4,5", "4.5[]", false}, {L"4x2", "42[]", false}, {L"\u0663", "3[]", false}, {L"4x", "4[]", true},
        {L"42@", "[42]", false}, {L"42~", "[10]", false}, {L"~~~", "[10]", false}, {L"13\n5\n", "[5]", false},
        {L"42\n^", "[42]", false}, {L"1.2.3\n", "1.2.3[]", true}, {L"101\n", "101[]", true}, {L"101\n^", "[10]", false}};
    // clang-format on
    for (const Kind& kind : Kinds()) {
        for (const auto& [keys, shown, answered] : rows) {
            if (std::wstring_view(keys).find_first_of(kind.leavingKeys) != std::wstring_view::npos) continue;
            SetFocus(other), Pump();
            const HWND edit = kind.open();
            SetFocus(other), SetWindowTextW(edit, L"10");
            kx::ui::ShowAnswer(edit, L"");
            kind.open(), Pump();
            TypeKeys(edit, keys);
            EXPECT_EQ(TextAndSelection(edit), shown) << kind.name << Narrow(keys);
            const std::string answer = Answer();
            const bool isSaid = answer.ends_with(kind.allowed) || answer.ends_with("<0;100>");
            EXPECT_TRUE(answered ? isSaid : answer.empty()) << kind.name << Narrow(keys) << answer;
        }
    }
}

TEST_F(Fields, EnterNothingThatWasNotTyped) {
    // What a laser at 10 mW is asked for, by the keys and by leaving the field then; what the field shows and says.
    // clang-format off
    const std::tuple<const wchar_t*, std::string> rows[] = {
        {L"", ", , 10, "}, {L"42^", ", , 10, "}, {L"13\n5\n", "Power(13) Power(5), , 5, "}, {L"42", ", Power(42), 42, "},
        {L"abc", ", , 10, "}, {L"1.2.3", ", , 10, \"1.2.3\": 0 to 100 mW"}, {L"1e1\n", "Power(10), , 10, "},
        {L"1000\n", ", , 10, \"1000\": 0 to 100 mW"}, {L"\b", ", , 10, \"\": 0 to 100 mW"}};
    // clang-format on
    for (const auto& [keys, expected] : rows) {
        slider.SetPower(10, true);
        SetFocus(slider.Edit()), Pump();
        TypeKeys(slider.Edit(), keys);
        const std::string entered = heard.record.Take();
        kx::ui::HideAnswer(slider.Edit());
        SetFocus(other), Pump();
        const std::string left = heard.record.Take(), shown = Narrow(TextOf(slider.Edit()));
        EXPECT_EQ(entered + ", " + left + ", " + shown + ", " + Answer(), expected) << Narrow(keys);
        kx::ui::HideAnswer(slider.Edit());
    }
    // A slider alone takes the strongest for what is beyond it, without the further habit.
    KX_SetFieldHabits(slider, KxFieldHabits::All());
    SetFocus(slider.Edit()), Pump();
    TypeKeys(slider.Edit(), L"1000\n");
    EXPECT_EQ(heard.record.Take(), "Power(100)");
}

TEST_F(Fields, TellAsBeforeAndGoOnToFields) {
    box.SetId(44);
    spin.SetId(45);
    box.Create(parent.Window(), 10, 10, 60, 20, true, true);
    AddChild(parent.Window(), L"BUTTON", 8, {80, 10, 100, 30}, WS_TABSTOP);
    spin.Create(parent.Window(), 110, 10, 60, 20, true, true);
    box.SetNumber(10);
    SetFocus(box.GetEditWindow());
    Told();
    // Told: focus 256, lost 512, changed 768; a character 258, Enter 1025.
    Play({{[] { Type(L"4"), Key(VK_ESCAPE), Key(VK_ESCAPE); }, "44:258=52 44:768#44 44:258=27 44:768#44 44:258=27"},
          // What the host sets meanwhile is set, also if it is what has been typed.
          {[&] { Type(L"7"), box.SetNumber(7), parent.Record().Clear(), Key(VK_ESCAPE); }, "44:258=27"},
          {[&] { Type(L"7"), parent.Record().Clear(), Type(L"\n"); }, "44:258=13 44:1025#44 44:512#44 45:256#45"}});
    EXPECT_EQ(GetFocus(), spin.GetEditWindow());
    Type(L"\n");
    EXPECT_EQ(GetFocus(), spin.GetEditWindow()) << "the last stays";
    EXPECT_EQ(KX_GetFieldHabits(box.GetEditWindow()).tableOnly, true);
    EXPECT_TRUE(KX_SetFieldHabits(box, {.select = true}));
    EXPECT_EQ(KX_GetFieldHabits(box.GetEditWindow()).tableOnly, false) << "the nearest decides";
    EXPECT_FALSE(KX_SetFieldHabits(nullptr, {}));
}

// The same keys without the habits and with them: 42, Escape, left; 7,5 and Enter; x, left.
TEST_F(Fields, TellTheirHostsInTheGivenOrder) {
    const std::pair<const char*, const char*> boxes = {
        "Left(\"4210\") Enter(\"427,510\") Left(\"427,510\") Left(\"427,5x10\")",
        "Left(\"10\") Enter(\"7.5\") Left(\"7.5\") Left(\"7.5\")"};
    const std::pair<const char*, const char*> rows[] = {
        boxes,
        boxes,
        boxes,
        {"Power(100) Power(7) Power(7) Power(0)", "Power(8)"},
        {"Range(100) Range(7) Range(7) Range(0)", "Range(8)"},
        {"Aperture(100) Aperture(7) Aperture(7) Aperture(0)", "Aperture(8)"},
        {"Cell(7)", "Cell(7.5)"},
        {"Step(10) Changed(2) Step(7.5) Changed(2) Changed(2) Box(\"Invalid value entered.\")",
         "Step(7.5) Changed(2) Changed(3)"}};
    const std::vector<Kind> kinds = Kinds();
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        for (const bool habits : {false, true}) {
            KX_SetFieldHabits(parent.Window(), habits ? KxFieldHabits::AllOfLight() : KxFieldHabits{});
            for (const wchar_t* keys : {L"42^", L"7,5\n", L"x"})
                SetFocus(other), kinds[i].open(), TypeKeys(GetFocus(), keys), SetFocus(other), Pump();
            EXPECT_EQ(heard.record.Take(), habits ? rows[i].second : rows[i].first) << kinds[i].name;
        }
    }
}

// Of a list, its numbers; none when something is none.
std::vector<double> NumbersIn(const std::wstring& text, wchar_t separator) {
    const kx::ui::ValueList list = kx::ui::SplitValues(text, separator ? separator : L'\n');
    return list.wrong.empty() ? list.values : std::vector<double>();
}

// Any keys, pasted texts and ways out of a field: its text is always what the keys have made of it, and whatever the
// host is told as entered is all that the field has shown then, and allowed. KX_FIELD_KEYS and KX_FIELD_SEED choose.
struct FieldsUnderAnyKeys : Fields {
    explicit FieldsUnderAnyKeys() : seed(Number("KX_FIELD_SEED", 1)), random(static_cast<std::uint64_t>(seed)) {}
    static int Number(const char* name, int otherwise) {
        const char* value = std::getenv(name);
        return value ? std::atoi(value) : otherwise;
    }
    void Must(bool holds, const std::string& otherwise) {
        if (!holds && wrong.empty()) wrong = otherwise;
    }
    kx::ui::FieldText Look() const { return Fields::Look(edit); }
    bool IsAllowed(const Kind& kind, const std::wstring& text) const {
        if (text.empty()) return kind.readsEmpty;
        const auto numbers = NumbersIn(text, kind.separator);
        return !numbers.empty() && (kind.separator || NumbersIn(text.substr(0, kind.read), 0) == numbers) &&
               std::ranges::all_of(numbers,
                                   [&](double n) { return std::isfinite(n) && n >= kind.least && n <= kind.most; });
    }
    void Open(const Kind& kind) {
        if (GetFocus() != edit) SetFocus(other), edit = kind.open(), Pump();
        const auto now = Look();
        Must(now.first == 0 && now.last == now.text.size(), "the focus does not select all");
        Must(!isHeld || now.text == held, "what is held is not brought back");
        held = now.text, isHeld = true, isTouched = false;
        seen.insert(held);
    }
    // The text is then what the rules make of what is typed or pasted.
    void Put(const Kind& kind, const std::wstring& text, bool isPasted) {
        said = (isPasted ? "paste " : "key ") + Narrow(text.substr(0, 30));
        std::optional<std::wstring> written;
        if (isPasted)
            written = kx::ui::NumberPasted(text, kind.separator);
        else if (const auto character = kx::ui::NumberCharacter(text[0], kind.separator))
            written = {*character};
        const auto most = static_cast<std::size_t>(SendMessageW(edit, EM_GETLIMITTEXT, 0, 0));
        const kx::ui::FieldText expected = written ? kx::ui::Written(before, *written, most) : before;
        isTouched |= written.has_value();
        if (isPasted) PutOnClipboard(text), Key('V', MOD_CONTROL);
        if (!isPasted) TypeKeys(edit, text);
        Must(Look() == expected, "not " + Narrow(expected.text));
    }
    void Paste(const Kind& kind) {
        Put(kind,
            random.Of<std::wstring>({L"7,5", L" 12\r\n", L"1e400", L"--5", L"1.2.3", L"", L"  ", L"\u0663\u0664",
                                     L"1\a2", L"50 mW", L"1,234.5", L"3;4", std::wstring(2'000'000, L'1'),
                                     std::wstring(110, L'0') + L"7", L"4.2000000000000001e1"}),
            true);
    }
    void OtherKey() {
        const WORD key =
            random.Of<WORD>({VK_BACK, VK_DELETE, VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_UP, 'A', 'Z', 'X'});
        said = "key code " + std::to_string(key);
        const bool isMove = key >= VK_END && key <= VK_RIGHT && (key != VK_UP || edit != spin.GetEditWindow());
        Key(key, key >= 'A' ? MOD_CONTROL : isMove && random.OneIn(3) ? MOD_SHIFT : 0);
        isTouched |= !isMove && key != 'A';
        Must((!isMove && key != 'A') || Look().text == before.text, "the text changes");
        Must(key != 'Z' || seen.contains(Look().text), Narrow(Look().text) + " has not been shown");
    }
    // Enter, or the focus goes.
    void Leave(const Kind& kind, bool byEnter) {
        said = byEnter ? "Enter" : "left";
        const bool isFit = IsAllowed(kind, before.text), isNew = isTouched && before.text != held;
        byEnter ? Key(VK_RETURN) : void(SetFocus(other));
        Pump();
        const std::wstring& meant = isFit || !isTouched ? before.text : held;
        std::vector<double> numbers = NumbersIn(meant, kind.separator);
        if (meant.empty()) numbers = {0};
        const auto isNear = [&](double a, double b) { return std::abs(a - b) <= kind.coarseness + std::abs(b) * 1e-9; };
        for (const auto& told : heard.entered)
            Must(std::ranges::equal(told, numbers, isNear), testing::PrintToString(told) + " is entered");
        const bool isCell = edit == cells.Edit();
        Must(!isNew || !isFit || (isCell && !byEnter) || !heard.entered.empty(), "nothing is entered");
        const bool isQuiet = byEnter ? isTouched && !isFit : kind.tellsOnlyNews && (!isTouched || !isFit || isCell);
        Must(!isQuiet || heard.entered.empty(), "something is entered");
        const bool stays = GetFocus() == edit && Look().text == before.text;
        // Nothing is nothing to enter in the Z panel.
        Must(!byEnter || !isTouched || isFit || stays || before.text.empty(), "Enter does not stay with it");
        if (byEnter && isTouched && !isFit && stays) return;
        if (isNew && isFit && !(isCell && !byEnter)) isHeld = false;
        Open(kind);
    }
    void Step(const Kind& kind) {
        before = Look(), heard.entered.clear();
        const int way = random.Below(20);
        if (way < 4) return Leave(kind, way < 2);
        if (way == 4)
            said = "Escape", Key(VK_ESCAPE), Open(kind);
        else if (way == 5)
            Paste(kind);
        else if (way < 10)
            OtherKey();
        else
            Put(kind, {random.Of(std::vector<wchar_t>(letters.begin(), letters.end()))}, false);
        seen.insert(Look().text);
        Must(heard.entered.empty(), "something is entered");
    }

    static constexpr std::wstring_view letters = L"01234567890123456789..,,--eEx; +\u0663\uFF15";
    int seed;
    kx::Random random;
    HWND edit = nullptr;
    std::wstring held;  // what Escape brings back, if that is known
    bool isHeld = false, isTouched = false;
    std::set<std::wstring> seen;
    std::string said, wrong;
    kx::ui::FieldText before;
};

TEST_F(FieldsUnderAnyKeys, EnterWhatWasTypedAndShown) {
    const int keys = Number("KX_FIELD_KEYS", 100);
    for (const Kind& kind : Kinds()) {
        std::string trace;
        isHeld = false, edit = nullptr, seen.clear(), Open(kind);
        for (int i = 0; i < keys && wrong.empty(); ++i) {
            Step(kind);
            trace += said + " -> " + TextAndSelection(edit) + "\n";
        }
        ASSERT_EQ(wrong, "") << kind.name << " from seed " << seed << "\n"
                             << trace.substr(trace.size() > 900 ? trace.size() - 900 : 0);
    }
}

TEST_F(Fields, AnswerBesideTheField) {
    const HWND edit = box.GetEditWindow(), frame = GetAncestor(box, GA_PARENT);
    SetFocus(edit);
    Type(L"x");
    const HWND answer = kx::ui::AnswerWindow();
    RECT said{}, field{}, both{};
    GetWindowRect(answer, &said);
    GetWindowRect(box, &field);
    EXPECT_FALSE(IntersectRect(&both, &said, &field)) << "what was typed can be seen";
    EXPECT_EQ(GetFocus(), edit);
    // The call of a message box goes there as well.
    box.SetText(L"200");
    KX_SetMessageBoxHandler(
        [](HWND, const wchar_t*, const wchar_t*, UINT, int, void*) -> int { return ADD_FAILURE(), IDOK; }, nullptr);
    EXPECT_FALSE(box.CheckRestriction(true, false, 0));
    EXPECT_NE(Answer().find("interval <0;100>"), std::string::npos);
    ShowWindow(frame, SW_HIDE);
    EXPECT_TRUE(PumpUntil([] { return !kx::ui::AnswerWindow(); }));
}

// The host would read 0.
TEST_F(Fields, EnterNothingThatIsTooLongToRead) {
    box.SetFocus();
    PutOnClipboard(std::wstring(101, L'0') + L"7");
    Key('V', MOD_CONTROL), Type(L"\n");
    EXPECT_EQ(heard.record.Take().find("Enter("), std::string::npos);
}

}  // namespace
