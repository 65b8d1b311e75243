import QtQuick
import QtTest
import Orvik.Tallyview.Theme

SoftScrollView {
    id: view

    width: 100
    height: 200
    contentHeight: 1000

    TestCase {
        name: "Scroller"
        when: windowShown

        readonly property Item knob: findChild(view, "knob")
        readonly property Item scroller: knob.parent.parent

        function init() {
            view.contentHeight = 1000;
            view.scrollTo(0, false);
        }

        function test_knobTellsPlaceAndShare_data() {
            return [{ tag: "top", top: 0, knobY: 0 }, { tag: "middle", top: 400, knobY: 80 },
                    { tag: "end", top: 800, knobY: 160 }, { tag: "beyond", top: 5000, knobY: 160 }];
        }
        function test_knobTellsPlaceAndShare(data: var) {
            view.scrollTo(data.top, false);
            compare(scroller.knobStart, data.knobY);
            compare(knob.width, 3 - 0.7);
            compare(knob.height, 40 - 3);
            compare(knob.mapToItem(view, 0, 0).x, 97.35);
        }

        function test_contentDecidesTheKnob() {
            for (const length of [0, 200]) {
                view.contentHeight = length;
                verify(!scroller.visible);
            }
            view.contentHeight = 1000000;
            compare(scroller.knobLength, scroller.shortestKnob);
            view.scrollTo(1000000, false);
            compare(scroller.knobStart + scroller.knobLength, 200);
            view.contentHeight = 300;
            compare(view.contentY, 100);
        }

        function test_pointer() {
            // It grips the knob beside its visible part.
            mousePress(view, 92, 20);
            mouseMove(view, 92, 60);
            compare(view.contentY, 200);
            mouseMove(view, 92, 400);
            compare(view.contentY, 800);
            mouseRelease(view, 92, 400);
            // A click beside the knob turns a page.
            mouseClick(view, 98, 2);
            compare(view.contentY, 600);
        }

        function test_wheelStopsAtTheEnds() {
            mouseWheel(view, 50, 50, 0, -120);
            tryCompare(view, "contentY", view.wheelStep);
            mouseWheel(view, 50, 50, 0, 1200);
            tryCompare(view, "contentY", 0);
        }

        function test_knobHidesWhenNothingMoves() {
            mouseMove(view, 10, 10);
            view.scrollTo(100, false);
            tryCompare(knob.parent, "opacity", 1);
            tryCompare(knob.parent, "opacity", 0, 3000);
        }
    }
}
