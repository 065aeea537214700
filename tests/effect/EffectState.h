// The effect's state against that of the model.
#pragma once

#include <string>

class ReferenceDelay;
class VstXSynth;

// Empty when all fields and both lines are the same, bit for bit, not-a-numbers being all alike;
// otherwise what differs first.
std::string stateDifference(const VstXSynth& effect, const ReferenceDelay& model);
