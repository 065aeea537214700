// The checks, each in the file of its name or with its like. One that says nothing about a plug-in
// throws CheckSkipped.
#pragma once

namespace tvhost {

class CheckRun;

namespace checks {

void opensAndCloses(CheckRun& run);
void describesItself(CheckRun& run);
void printsNothing(CheckRun& run);
void leavesTheProcessAlone(CheckRun& run);
void textsEnd(CheckRun& run);
void textsFit(CheckRun& run);
void parametersKeepValues(CheckRun& run);
void parametersStayApart(CheckRun& run);
void parametersRest(CheckRun& run);
void programsAnswer(CheckRun& run);
void everyRate(CheckRun& run);
void everyBlockSize(CheckRun& run);
void worksInPlace(CheckRun& run);
void inputsUntouched(CheckRun& run);
void staysInBlock(CheckRun& run);
void replacesOutputs(CheckRun& run);
void silenceStaysSilence(CheckRun& run);
void givesNumbers(CheckRun& run);
void forgetsNan(CheckRun& run);
void restsAfterSound(CheckRun& run);
void fadesOut(CheckRun& run);
void parametersRestore(CheckRun& run);
void stateOutlivesStart(CheckRun& run);
void chunksRestore(CheckRun& run);
void presetsRestore(CheckRun& run);
void programsKeepEdits(CheckRun& run);
void blocksAgree(CheckRun& run);
void latencyAsTold(CheckRun& run);
void tailAsTold(CheckRun& run);
void automationInsideBlocks(CheckRun& run);
void programsWhileRunning(CheckRun& run);
void editorOpensAndCloses(CheckRun& run);
void editorLeavesNoWindow(CheckRun& run);
void editorSizeAsTold(CheckRun& run);
void editorLosesItsWindow(CheckRun& run);
void editorBesideAudio(CheckRun& run);
void editorOnAnotherThread(CheckRun& run);
void writesFromFourThreads(CheckRun& run);
void manyInstances(CheckRun& run);
void instancesApart(CheckRun& run);
void noAllocationInBlock(CheckRun& run);
void noLockInBlock(CheckRun& run);
void noSystemCallInBlock(CheckRun& run);
void meetsItsDeadline(CheckRun& run);
void settingsAtEveryRate(CheckRun& run);
void indicesBeyond(CheckRun& run);
void damagedChunks(CheckRun& run);
void randomCalls(CheckRun& run);

} // namespace checks
} // namespace tvhost
