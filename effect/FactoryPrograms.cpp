#include "effect/DelayProgram.h"

#include "plugin/VstText.h"
#include "plugin/vst2/EffectOpcodes.h"

namespace {

// Switches as they are stored: a program with a high-pass value loads with its low-pass inside the
// loop whatever stands here.
void fill(DelayProgram& program, const char* name, float delayTime, float feedBack, double lowPass,
          double highPass, bool lowPassType, bool highPassType, double leftRight, double panDepth,
          double mix) {
    program.delayTime = delayTime;
    program.feedBack = feedBack;
    program.lowPass = lowPass;
    program.highPass = highPass;
    program.highPassType = highPassType;
    program.lowPassType = lowPassType;
    program.leftRight = leftRight;
    program.panDepth = panDepth;
    program.mix = mix;
    vst_strncpy(program.name, name, kVstMaxProgNameLen);
}

} // namespace

void fillFactoryPrograms(DelayProgram* programs) {
    // Name, delay, feedback, low pass, high pass, low-pass type, high-pass type, left/right,
    // pan depth, mix.
    // clang-format off
    fill(programs[ 0], "SlapBack",         0.079977326f, 0.215f,     0.374,    0.655999, true,  false, 0.5,      0.0,      1.0);
    fill(programs[ 1], "Doubler",          0.079977f,    0.6399999f, 0.93,     0.474999, true,  false, 0.5,      0.349999, 0.709999);
    fill(programs[ 2], "Country SlapBack", 0.12498866f,  0.529999f,  0.634999, 0.365,    true,  false, 0.5,      0.0,      1.0);
    fill(programs[ 3], "Just A Touch",     0.18498866f,  0.699999f,  0.56,     0.239999, true,  true,  0.3,      0.0,      0.324999);
    fill(programs[ 4], "Double Echo",      0.0499773f,   0.215f,     0.481999, 0.519999, true,  false, 0.5,      0.0,      1.0);
    fill(programs[ 5], "Canyon",           0.249977f,    0.529999f,  0.009999, 1.0,      true,  false, 0.5,      0.0,      0.884999);
    fill(programs[ 6], "RattleSnake",      0.31f,        0.79f,      0.215,    1.0,      true,  true,  0.5,      0.0,      1.0);
    fill(programs[ 7], "CloudFishing",     0.34499f,     0.639999f,  0.93,     0.0,      false, true,  0.5,      0.0,      0.495);
    fill(programs[ 8], "Small Echo",       0.274988f,    0.50499f,   0.73,     0.474999, true,  false, 0.5,      0.485,    0.49);
    fill(programs[ 9], "Bubbly",           0.1349886f,   0.5f,       0.239999, 0.474999, false, true,  0.5,      0.0,      0.5);
    fill(programs[10], "Stadium",          0.19498865f,  0.135f,     0.435,    0.479999, false, false, 0.5,      0.0,      1.0);
    fill(programs[11], "Spacey",           0.329977f,    0.4f,       0.67,     0.0,      false, false, 0.5,      0.855,    1.0);
    fill(programs[12], "Stoned",           0.3399773f,   0.50499f,   0.0,      0.595,    true,  false, 0.5,      0.94499,  0.519999);
    fill(programs[13], "SlowHand Blues",   0.259977f,    0.335f,     0.56,     0.239999, false, false, 0.3,      0.0,      0.27);
    fill(programs[14], "Walking Shadow",   0.23498866f,  0.6999999f, 0.43,     0.67,     true,  true,  0.3,      1.0,      0.769999);
    fill(programs[15], "Sliterhing",       0.1498866f,   0.639999f,  0.27099,  0.564999, true,  true,  0.5,      0.0,      0.72);
    fill(programs[16], "Thick",            0.184988f,    0.639999f,  0.745,    0.449999, true,  true,  0.5,      0.5,      1.0);
    fill(programs[17], "Thick2",           0.074988f,    0.37f,      0.43,     0.67,     true,  true,  0.5,      0.0,      1.0);
    fill(programs[18], "Clicky",           0.079977f,    0.639999f,  0.31,     0.855,    true,  true,  0.5,      1.0,      0.5);
    fill(programs[19], "Whisky Brawl",     0.07498866f,  0.144999f,  0.14,     1.0,      true,  true,  0.56,     1.0,      1.0);
    fill(programs[20], "Repeat After Me",  0.1799773f,   0.144999f,  1.0,      0.0,      false, true,  0.56,     0.264999, 1.0);
    fill(programs[21], "Slinky",           0.1799773f,   0.814999f,  0.245,    0.754999, true,  true,  0.56,     0.519999, 0.634999);
    fill(programs[22], "RanchHand",        0.2199773f,   0.264999f,  0.14,     0.555,    true,  true,  0.5,      0.245,    0.159999);
    fill(programs[23], "Bright",           0.07498866f,  0.759999f,  0.23,     1.0,      true,  true,  0.519999, 0.769999, 1.0);
    fill(programs[24], "Glassy",           0.1599773f,   0.759999f,  0.204999, 0.595,    true,  true,  0.519999, 0.425,    1.0);
    fill(programs[25], "Punk",             0.19498865f,  0.529999f,  0.577,    0.0,      false, false, 0.5,      0.0,      0.67);
    // clang-format on
}
