#include "tests/support/screen/Picture.h"

#include "tests/resources/ControlPlaces.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

namespace {

struct SizeInPoints {
    int width;
    int height;
};

std::map<std::string, SizeInPoints> expectedPictures() {
    std::map<std::string, SizeInPoints> pictures = {
        {"delaybackground", {kFaceWidth, kFaceHeight}},
        {"switchoff", {15, 16}},
        {"switchon", {15, 16}},
        {"loadback", {250, 121}},
        {"bmp00131", {150, 21}},
        {"bmp00130", {13, 13}},
    };
    for (int frame = 0; frame < kKnobFrames; ++frame) {
        pictures[knobFrameName(frame)] = {kKnobSize, kKnobSize};
    }
    return pictures;
}

} // namespace

TEST(PictureFiles, FolderHoldsEachNamedPictureAndNoOther) {
    std::set<std::string> expected;
    for (const auto& [name, size] : expectedPictures()) {
        expected.insert(name + ".png");
    }
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(TVDELAY_RESOURCES_DIR)) {
        if (entry.path().extension() == ".png") {
            found.insert(entry.path().filename().string());
        }
    }
    EXPECT_EQ(found, expected);
}

TEST(PictureFiles, EachHasTwoPixelsAPoint) {
    for (const auto& [name, size] : expectedPictures()) {
        const Picture picture = Picture::load(picturePath(name));
        EXPECT_EQ(picture.width(), 2 * size.width) << name;
        EXPECT_EQ(picture.height(), 2 * size.height) << name;
    }
}

TEST(PictureFiles, EachTellsAResolutionOf144DotsAnInch) {
    for (const auto& [name, size] : expectedPictures()) {
        EXPECT_EQ(Picture::load(picturePath(name)).pixelsPerMetre(), 5669U) << name;
    }
}

TEST(PictureFiles, TogetherStayBelowTwoMegabytes) {
    std::uintmax_t total = 0;
    for (const auto& [name, size] : expectedPictures()) {
        total += std::filesystem::file_size(picturePath(name));
    }
    EXPECT_LT(total, 2'000'000U);
}

TEST(PictureFiles, WhatReplacesTheGroundIsOpaque) {
    EXPECT_TRUE(Picture::load(picturePath("delaybackground")).opaque());
    for (int frame = 0; frame < kKnobFrames; ++frame) {
        EXPECT_TRUE(Picture::load(picturePath(knobFrameName(frame))).opaque()) << frame;
    }
}
