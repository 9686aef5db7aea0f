#include "BenchSurface.h"
#include "SampleDocument.h"
#include "settings/AdditionalSettings.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "viewbase/ViewKey.h"

// What the setting WholeCharacters costs where no character is more than one unit: keys and clicks on the same text
// with the setting on and off.

namespace {

constexpr uint32_t Moves = 100'000;

// `wanted` leaves room for what the machine does to two runs of the same program, and for no more.
void CompareMoves(const char* name, Bench::ShownDocument& shown, uint32_t startLine, const Bench::Action& move,
                  double wanted) {
    const auto side = [&](uint32_t on) {
        return Bench::Side{[&] {
                               for (uint32_t i = 0; i < Moves; ++i) move();
                           },
                           [&, on] {
                               additionalSettings.WholeCharacters = on;
                               shown.editor.MoveCaret({startLine, 0});
                           }};
    };
    side(1).before();
    move();
    const TextPosition withIt = shown.editor.CaretPosition();
    side(0).before();
    move();
    Bench::Check(shown.editor.CaretPosition() == withIt, "both lead to the same place");
    Bench::Compare(name, side(1), side(0), wanted, 15);
}

} // namespace

int main() {
    LoadSettings(IniFile());
    const std::string sample = Bench::SampleBytes(20'000'000);
    Bench::SampleDocument document(sample);
    Bench::ShownDocument shown(*document);
    const auto press = [&](uint32_t key, bool ctrl) { return [&shown, key, ctrl] { shown.Press(key, ctrl); }; };
    CompareMoves("Right with WholeCharacters against without", shown, 0, press(ViewKey::Right, false), 1.05);
    CompareMoves("Left", shown, 100'000, press(ViewKey::Left, false), 1.05);
    CompareMoves("Ctrl+Right", shown, 0, press(ViewKey::Right, true), 1.05);
    CompareMoves("Down", shown, 0, press(ViewKey::Down, false), 1.05);
    int32_t x = 0;
    const auto click = [&] {
        x = (x + 7) % 400;
        shown.input.Drag().OnLeftButtonDown({x, 80}, false);
        shown.input.Drag().OnLeftButtonUp();
    };
    CompareMoves("a click", shown, 1000, click, 1.05);
    additionalSettings.WholeCharacters = 0;
    return Bench::ExitStatus();
}
