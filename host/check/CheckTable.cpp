#include "host/check/CheckTable.h"

#include "host/check/checks/Checks.h"

#include <algorithm>
#include <cstdio>

namespace tvhost {

namespace {

using namespace checks;

Check withDisplay(Check check) {
    check.needsDisplay = true;
    return check;
}

Check withWatch(Check check) {
    check.needsWatch = true;
    return check;
}

Check withGuards(Check check) {
    check.guardsMemory = true;
    return check;
}

Check toTheEnd(Check check) {
    check.endsInOrder = true;
    return check;
}

} // namespace

const std::vector<Check>& allChecks() {
    static const std::vector<Check> table{
        toTheEnd({"opens-and-closes", 1,
                  "A host can load, open, close and unload it a hundred times.", opensAndCloses}),
        {"describes-itself", 1, "Hosts can tell what it is and find it again in a session.",
         describesItself},
        {"prints-nothing", 1,
         "Standard output stays the host's own, which may be a pipe that somebody reads.",
         printsNothing},
        {"leaves-process-alone", 1,
         "The host keeps its folder, locale, signals, file rights and way of calculating.",
         leavesTheProcessAlone},

        {"texts-end", 2, "No text runs on into the host's memory.", textsEnd},
        {"texts-fit", 2, "Texts fit where a host keeps to the interface's own lengths.", textsFit},

        {"parameters-keep-values", 3, "A parameter answers what was written to it.",
         parametersKeepValues},
        {"parameters-stay-apart", 3, "Writing one parameter moves no other.", parametersStayApart},
        {"parameters-rest", 3, "No parameter moves by itself while sound runs.", parametersRest},
        {"programs-answer", 3, "Programs keep their number, name and values.", programsAnswer},

        {"every-rate", 4, "It runs at any rate from 8 to 384 kHz, fractions included.", everyRate},
        {"every-block-size", 4, "It runs in blocks of any size up to what it was told.",
         everyBlockSize},
        {"works-in-place", 4, "It sounds the same when outputs are the inputs' memory.",
         worksInPlace},
        {"inputs-untouched", 4, "Inputs that lie apart stay as the host gave them.",
         inputsUntouched},
        {"stays-in-block", 4, "It writes nothing before or behind a block.", staysInBlock},
        {"replaces-outputs", 4, "It fills every sample of its outputs, whatever stood there.",
         replacesOutputs},

        {"silence-stays-silence", 5, "Silence goes in and silence comes out.", silenceStaysSilence},
        {"gives-numbers", 5, "However it is set, loud sound comes out as numbers.", givesNumbers},
        {"forgets-nan", 5, "One sample that is no number does not silence it for good.",
         forgetsNan},
        {"rests-after-sound", 5, "It doesn't slow down on denormal numbers once sound has ended.",
         restsAfterSound},
        {"fades-out", 5, "What goes on after the sound gets softer and not louder.", fadesOut},

        {"parameters-restore", 6,
         "A session's parameters come back in whatever order they are "
         "written.",
         parametersRestore},
        {"state-outlives-start", 6, "What was restored holds before and after the first block.",
         stateOutlivesStart},
        {"chunks-restore", 6, "All parameters come back from the chunks of a session.",
         chunksRestore},
        {"presets-restore", 6, "All parameters come back from a preset file, program or bank.",
         presetsRestore},
        {"programs-keep-edits", 6, "Edited programs stay edited, as banks are restored.",
         programsKeepEdits},

        {"blocks-agree", 7, "The sound does not depend on how the host cuts it.", blocksAgree},
        {"latency-as-told", 7, "The sound comes as late as it tells, so that tracks stay together.",
         latencyAsTold},
        {"tail-as-told", 7, "A render ends no sooner than the sound.", tailAsTold},
        {"automation-inside-blocks", 7, "Parameters may move many times in a block.",
         automationInsideBlocks},
        {"programs-while-running", 7, "Programs may change while sound runs.",
         programsWhileRunning},

        withDisplay({"editor-opens-and-closes", 8, "Its editor opens and closes again and again.",
                     editorOpensAndCloses}),
        withDisplay({"editor-leaves-no-window", 8, "A closed editor leaves no window behind.",
                     editorLeavesNoWindow}),
        withDisplay({"editor-size-as-told", 8, "The host's window fits round its editor.",
                     editorSizeAsTold}),
        withDisplay({"editor-loses-its-window", 8,
                     "It outlives a window that goes before its editor is closed.",
                     editorLosesItsWindow}),
        withDisplay({"editor-beside-audio", 8,
                     "Its editor comes and goes while sound and automation run on another thread.",
                     editorBesideAudio}),
        withDisplay({"editor-on-another-thread", 8,
                     "It may be made on one thread and shown, asked and closed on others.",
                     editorOnAnotherThread}),

        {"writes-from-four-threads", 9, "Parameters may be written from any thread at any time.",
         writesFromFourThreads},
        {"many-instances", 9, "Hundreds of it run in one session.", manyInstances},
        {"instances-apart", 9, "Its instances know nothing of one another.", instancesApart},
        withWatch({"no-allocation-in-block", 9,
                   "A block takes and gives back no memory, which may last long.",
                   noAllocationInBlock}),
        withWatch({"no-lock-in-block", 9, "A block waits for no lock that another thread may hold.",
                   noLockInBlock}),
        {"no-system-call-in-block", 9, "A block does not wait for the system.",
         noSystemCallInBlock},
        {"meets-its-deadline", 9, "No block of 64 frames takes longer than it lasts.",
         meetsItsDeadline},

        withGuards({"settings-at-every-rate", 10,
                    "All parameters may stand at their ends at any rate.", settingsAtEveryRate}),
        {"indices-beyond", 10, "Parameters and programs that don't exist do no harm.",
         indicesBeyond},
        {"damaged-chunks", 10, "A damaged session does no harm.", damagedChunks},
        withDisplay({"random-calls", 10, "Any call may come at any time.", randomCalls}),
    };
    return table;
}

const Check* findCheck(const std::string& name) {
    const std::vector<Check>& table = allChecks();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const Check& check) { return check.name == name; });
    return found == table.end() ? nullptr : &*found;
}

std::string listChecks(int level) {
    std::string text;
    for (const Check& check : allChecks()) {
        if (check.level <= level) {
            char head[64];
            std::snprintf(head, sizeof head, "%2d  %-25s ", check.level, check.name);
            text += std::string(head) + check.protects + "\n";
        }
    }
    return text;
}

} // namespace tvhost
