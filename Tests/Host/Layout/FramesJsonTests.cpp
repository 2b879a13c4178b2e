#include "Host/Layout/FramesJson.h"

#include "Platform/Views/Node.h"
#include "Tests/Host/Layout/FakeMeasurers.h"

#include <gtest/gtest.h>

namespace host {
namespace {

TEST(FramesJson, SaysWhatStandsWhereAndInWhichLinks) {
    using namespace platform;
    const View view = vStack({.alignment = HorizontalAlignment::leading, .spacing = 0},
                             {text("four words, two lines\n\"cut\"").lineLimit(2).link("x:inner"),
                              hStack({.spacing = 0}, {symbol("star").padding({.leading = 1.0 / 3}), circle(Color::red)})
                                  .frame({.height = 12}),
                              divider()})
                          .capsuleBackground(Color::blue)
                          .link("x:outer?a=\"b\"");
    FakeTexts texts;
    FakeImages images;
    EXPECT_EQ(framesJson(layOut(view, {84, 67}, texts, images)),
              R"([{"type":"background","x":12,"y":12,"width":60,"height":43,)"
              R"("links":[{"url":"x:outer?a=\"b\"","x":12,"y":12,"width":60,"height":43}]},)"
              R"({"type":"text","x":12,"y":12,"width":60,"height":30,"text":"four\nwords, tw…",)"
              R"("links":[{"url":"x:inner","x":12,"y":12,"width":60,"height":30},)"
              R"({"url":"x:outer?a=\"b\"","x":12,"y":12,"width":60,"height":43}]},)"
              R"({"type":"symbol","x":12.333,"y":42,"width":12,"height":12,"symbol":"star",)"
              R"("links":[{"url":"x:outer?a=\"b\"","x":12,"y":12,"width":60,"height":43}]},)"
              R"({"type":"circle","x":42.167,"y":42,"width":12,"height":12,)"
              R"("links":[{"url":"x:outer?a=\"b\"","x":12,"y":12,"width":60,"height":43}]},)"
              R"({"type":"divider","x":12,"y":54,"width":60,"height":1,)"
              R"("links":[{"url":"x:outer?a=\"b\"","x":12,"y":12,"width":60,"height":43}]}])");
}

} // namespace
} // namespace host
