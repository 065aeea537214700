// Looks its own bundle up once. Started under names of all kinds, since a program's name is where
// the lookup begins. Exit status 0: there is none; 1: there is one.
#include "editor/AEffGUIEditor.h"

int main() {
    return AEffGUIEditor::createEffectBundle() != nullptr ? 1 : 0;
}
