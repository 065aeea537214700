// The macOS bundle in this process with its views: GNUstep in the place of AppKit, and an X server
// of the tests' own in that of the screen.
#pragma once

#include "tests/bundle/MacBundle.h"
#include "tests/bundle/runtime/ClassRegistration.h"
#include "tests/bundle/runtime/UnwindRegistration.h"

#include <memory>

class MacViews {
public:
    // Made at the first call: there is one in a process. The thread of the tests.
    static MacViews& shared();

    const BundleImage& image() const { return bundle_->image(); }
    AEffect* newEffect(audioMasterCallback host) const { return bundle_->entry()(host); }
    RunningMacBundle::Entry entry() const { return bundle_->entry(); }
    // Throws std::out_of_range when the bundle has none of that name.
    Class classNamed(const std::string& name) const;

private:
    MacViews();
    static bool isMapped(Class known);

    std::unique_ptr<RunningMacBundle> bundle_;
    std::unique_ptr<ClassRegistration> classes_;
    std::unique_ptr<UnwindRegistration> unwinding_;
};
