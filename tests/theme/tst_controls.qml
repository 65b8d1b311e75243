import QtQuick
import QtTest
import Orvik.Tallyview.Theme

Item {
    id: scene

    width: 200
    height: 120

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    SoftIconButton {
        id: button

        x: 40
        y: 40
        symbol: "star"
        helpText: "固定任务"
    }
    SoftText {
        id: text

        x: 100
        width: 40
        text: "<b>a long title</b> that is cut"
        size: 11.5
    }
    SignalSpy {
        id: clicks

        target: button
        signalName: "clicked"
    }

    TestCase {
        name: "Controls"
        when: windowShown

        function cleanup() {
            scene.forceActiveFocus();
            button.spinning = false;
        }

        function green(x: real, y: real): int {
            return grabImage(scene).green(x, y);
        }

        function test_pressedButton() {
            const canvas = green(5, 115);
            verify(green(72, 60) < canvas, "idle casts a shadow");
            mousePress(button, 15, 15);
            compare(button.scale, 0.97);
            compare(green(72, 60), canvas, "pressed casts none");
            compare(green(55, 73), canvas);
            fuzzyCompare(green(50, 48), Math.round(SoftTheme.insetSurface.g * 255), 1);
            mouseRelease(button, 15, 15);
            compare(button.scale, 1);
            verify(green(72, 60) < canvas);
            fuzzyCompare(green(50, 48), Math.round(SoftTheme.raisedSurface.g * 255), 1);
        }

        function test_ringShowsTheKeyboardsFocusOnly_data() {
            return [{ tag: "Tab", reason: Qt.TabFocusReason, ring: true },
                    { tag: "pointer", reason: Qt.MouseFocusReason, ring: false }];
        }
        function test_ringShowsTheKeyboardsFocusOnly(data: var) {
            const canvas = green(5, 115);
            button.forceActiveFocus(data.reason);
            // Left of the button, within the light of which nothing is dark.
            compare(green(38, 55) < canvas - 60, data.ring);
        }

        function test_spaceClicksAButtonInFocus() {
            clicks.clear();
            button.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Space);
            compare(clicks.count, 1);
        }

        function test_symbolSpinsAndComesToRest() {
            button.spinning = true;
            tryVerify(() => button.contentItem.rotation > 5);
            button.spinning = false;
            tryCompare(button.contentItem, "rotation", 0);
        }

        function test_reducedMotionKeepsTheSymbolStill() {
            SoftTheme.reducedMotion = true;
            button.spinning = true;
            wait(50);
            compare(button.contentItem.rotation, 0);
            SoftTheme.reducedMotion = false;
        }

        function test_textIsPlainAndCut() {
            compare(text.textFormat, Text.PlainText);
            verify(text.truncated);
            fuzzyCompare(text.fontInfo.pixelSize, 11.5, 0.5);
        }
    }
}
