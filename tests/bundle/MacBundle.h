// The macOS bundle under test, and what comes with it.
#pragma once

#include "tests/bundle/BundleImage.h"
#include "tests/bundle/MachOFile.h"
#include "tests/bundle/Traps.h"

#include "plugin/vst2/AEffect.h"

#include <string>

// Its directory. Throws std::runtime_error when it has not been built.
const std::string& macBundle();

// Its code as a file, parsed once.
const MachOFile& macBundleCode();

// The program that is packed beside it, for Macs to check it by. The same for its code.
const std::string& macCheck();
const MachOFile& macCheckCode();

// Its code in this process.
class RunningMacBundle {
public:
    using Entry = AEffect* (*)(audioMasterCallback);

    // Throws std::runtime_error when the bundle can't be mapped.
    RunningMacBundle();
    // `first` is asked before the engine's own stand-ins, and may answer null.
    RunningMacBundle(BundleImage::Resolver first, const BundleImage::Preparation& prepare);

    Entry entry() const;
    const BundleImage& image() const { return image_; }

private:
    void* resolve(const MachOFile::Bind& bind);

    BundleImage::Resolver first_;
    Traps traps_;
    BundleImage image_;
};
