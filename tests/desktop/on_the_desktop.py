"""What all tests on a real desktop share."""

import unittest

from private_desktop import Desktop, close_window, start_accessibility, until

REFRESH = "button", "刷新任务"


class OnTheDesktop(unittest.TestCase):
    maxDiff = None  # complaints are shown whole

    @classmethod
    def setUpClass(cls):
        start_accessibility()

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)

    def expect(self, kind, name):
        return until(lambda: self.desktop.find(kind, name), f"{kind} {name}")

    def stored(self, key, value):
        """The settings file comes to hold a value; changes are written a moment later."""
        until(lambda: self.desktop.setting(key) == value, f"{key}={value} is stored")

    def tearDown(self):
        self.assertEqual(self.desktop.complaints(), [])

    def close_window(self):
        close_window()
        until(lambda: not self.desktop.find(*REFRESH), "the window is gone")

    def running_threads(self, count):
        """The ids of threads that have just started to run."""
        ids = [row[0] for row in self.desktop.sql(
            "SELECT id FROM threads WHERE archived = 0 AND rollout_path <> '' LIMIT ?", count)]
        for thread in ids:
            self.desktop.begin_task(thread, cwd="/src/atlas", title=f"Task {thread}")
        return ids
