#include "editor/ControlTable.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

std::vector<ControlPlace> allPlaces() {
    std::vector<ControlPlace> places(kKnobPlaces.begin(), kKnobPlaces.end());
    places.insert(places.end(), kSwitchPlaces.begin(), kSwitchPlaces.end());
    return places;
}

} // namespace

TEST(ControlTable, EachControlHasItsPlaceAndParameter) {
    const double expected[9][5] = {
        {60, 202, 48, 48, 0},  {239, 202, 48, 48, 8}, {154, 202, 48, 48, 1},
        {117, 119, 48, 48, 2}, {192, 119, 48, 48, 3}, {75, 37, 48, 48, 7},
        {222, 37, 48, 48, 6},  {82, 132, 15, 16, 4},  {253, 132, 15, 16, 5},
    };
    const std::vector<ControlPlace> places = allPlaces();
    ASSERT_EQ(places.size(), std::size(expected));
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_EQ(places[i].x, expected[i][0]) << i;
        EXPECT_EQ(places[i].y, expected[i][1]) << i;
        EXPECT_EQ(places[i].width, expected[i][2]) << i;
        EXPECT_EQ(places[i].height, expected[i][3]) << i;
        EXPECT_EQ(places[i].parameter, expected[i][4]) << i;
    }
}

TEST(ControlTable, EachParameterHasExactlyOneControl) {
    std::set<int> parameters;
    for (const ControlPlace& place : allPlaces()) {
        parameters.insert(place.parameter);
    }
    EXPECT_EQ(parameters, (std::set<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}
