#include "terminal/studies/StudyLook.h"

#include <map>

namespace ta::terminal {

const StudyLook& LookOf(StudyType type) {
    using enum StudyLook::Name;
    static const StudyLook plain;
    static const std::map<StudyType, StudyLook> looks{
        {0, {Display}},
        {4, {None, {"MA{0}", "MA{1}", "MA{2}", "MA{3}"}}},
        {5, {None, {"EMA{0}", "EMA{1}"}}},
        {6, {None, {"WMA{0}", "WMA{1}"}}},
        {16, {Display, {"", "MV{0}", "MV{1}"}}},
        {17, {None, {"OBV", "MA{0}"}}},
        {19, {.levels = {20, 80}}},
        {23, {.lines = {"K", "D"}, .levels = {20, 80}}},
        {24, {None, {"RSI{0}", "RSI{1}"}, {30, 70}}},
        {25, {.levels = {-80, -20}}},
        {26, {.levels = {-100, 100}}},
        {27, {None, {"BIAS{0}", "BIAS{1}"}}},
        {28, {None, {"PSY{0}", "PSY{1}"}, {25, 75}}},
        {29, {None, {"MTM{0}", "MA{1}"}}},
        {30, {None, {"ROC{0}", "MA{1}"}}},
        {31, {.lines = {"K", "D"}, .levels = {20, 80}}},
    };
    const auto found = looks.find(type);
    return found == looks.end() ? plain : found->second;
}

}  // namespace ta::terminal
