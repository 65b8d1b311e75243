import QtQuick
import QtTest
import Orvik.Tallyview.Theme

Item {
    id: scene

    width: 300
    height: 200

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    Loader {
        id: stage

        x: 60
        y: 60
    }

    Component {
        id: raised

        SoftRaised { width: 150; height: 80; radius: 12 }
    }
    Component {
        id: flat

        SoftRaised { width: 150; height: 80; radius: 12; strength: 0 }
    }
    Component {
        id: well

        SoftInset { width: 150; height: 80; radius: 10 }
    }
    Component {
        id: column

        SoftDivider { axis: Qt.Vertical; height: 100 }
    }

    TestCase {
        name: "Surfaces"
        when: windowShown

        function cleanup() {
            SoftTheme.dark = false;
            stage.sourceComponent = null;
        }

        function show(component: Component): var {
            stage.sourceComponent = component;
            return grabImage(scene);
        }

        function lightness(picture: var, x: real, y: real): real {
            return picture.red(x, y) + picture.green(x, y) + picture.blue(x, y);
        }

        function verifyColor(picture: var, x: real, y: real, expected: color) {
            const shown = picture.pixel(x, y);
            for (const part of ["r", "g", "b"])
                fuzzyCompare(shown[part], expected[part], 0.011, part + " at " + x + "," + y);
        }

        function test_raised_data() {
            return [{ tag: "light", dark: false }, { tag: "dark", dark: true }];
        }
        function test_raised(data: var) {
            SoftTheme.dark = data.dark;
            const picture = show(raised);
            const canvas = lightness(picture, 5, 195);
            verifyColor(picture, 135, 100, SoftTheme.raisedSurface);
            verify(lightness(picture, 214, 120) < canvas, "shadow to the right");
            verify(lightness(picture, 150, 144) < canvas, "shadow below");
            verify(lightness(picture, 56, 90) >= canvas, "light to the left");
            verify(lightness(picture, 120, 60) > lightness(picture, 120, 64), "rim");
        }

        function test_changesWithTheAppearance() {
            show(raised);
            SoftTheme.dark = true;
            verifyColor(grabImage(scene), 135, 100, SoftTheme.raisedSurface);
        }

        function test_withoutStrengthNothingIsCast() {
            const picture = show(flat);
            verifyColor(picture, 135, 100, SoftTheme.raisedSurface);
            for (const place of [[213, 120], [150, 142], [57, 100], [120, 57]])
                verifyColor(picture, place[0], place[1], SoftTheme.canvas);
        }

        function test_wellIsFlat() {
            const picture = show(well);
            for (const place of [[61, 100], [135, 61], [208, 100], [135, 138]])
                verifyColor(picture, place[0], place[1], SoftTheme.insetSurface);
            for (const place of [[60, 60], [59, 100], [210, 100], [212, 142]])
                verifyColor(picture, place[0], place[1], SoftTheme.canvas);
        }

        function test_dividerIsOnePointWide() {
            const picture = show(column);
            compare(stage.item.width, 1);
            verify(lightness(picture, 60, 100) < lightness(picture, 59, 100));
            verifyColor(picture, 59, 100, SoftTheme.canvas);
            verifyColor(picture, 61, 100, SoftTheme.canvas);
        }

        function test_opacityIsMultiplied() {
            fuzzyCompare(SoftTheme.withOpacity(SoftTheme.softShadowDark, 0.45).a, 0.23 * 0.45, 0.001);
        }
    }
}
