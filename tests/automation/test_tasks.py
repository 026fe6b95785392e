import os
import pwd
import unittest
from datetime import datetime

import quillbox
from support import ZERO_DATE, Events, MachineTest, element, saved

NOTIFYING = {
    "ModifiedBy": "Ann", "ModifiedOn": datetime(2001, 1, 1), "CreatedBy": "Ben", "CreatedOn": datetime(2002, 2, 2),
    "Status": "Done", "TopicID": "{T}", "AssignedTo": "Cy", "Notes": "note", "Title": "title", "Priority": "High",
}
ELEMENT = (
    '<Task Key="{K}" Priority="High" Title="Write" AssignedTo="Ann" TopicID="{T}" Status="Done" '
    'CreatedOn="%s" CreatedBy="Ben" ModifiedOn="%s" ModifiedBy="Cy">notes &amp; more</Task>')


class Items(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()

    def test_a_new_task_has_its_defaults_and_a_creation_stamp(self):
        task = quillbox.Task()
        self.assertEqual((task.Status, task.Priority), ("Not Started", "Medium"))
        for name in ("Key", "Title", "Notes", "AssignedTo", "TopicID", "ModifiedBy"):
            self.assertEqual(getattr(task, name), "", name)
        self.assertNow(task.CreatedOn)
        self.assertEqual(task.CreatedBy, pwd.getpwuid(os.getuid()).pw_name)
        self.assertEqual((task.ModifiedOn, bool(task.PauseEvents), task.QbProject), (ZERO_DATE, False, None))

    def test_a_change_of_a_task_without_a_project_is_stamped(self):
        task = quillbox.Task()
        task.Title = "x"
        self.assertNow(task.ModifiedOn)
        self.assertEqual(task.ModifiedBy, task.CreatedBy)

    def test_each_property_is_told_and_marks_the_tasks(self):
        task = self.p.NewTask()
        for name, value in NOTIFYING.items():
            self.p.Dirty = False
            events = Events(self.p, without=("DirtyStateChanged",))
            setattr(task, name, value)
            self.assertEqual(events, [("TaskChanged", task)], name)
            self.assertEqual((bool(self.p.Tasks.Dirty), bool(self.p.ProjectDirty)), (True, False), name)
            if not name.startswith("Modified"):
                self.assertEqual(getattr(task, name), value, name)

    def test_a_listener_sees_the_old_stamps(self):
        task = self.p.NewTask()
        seen = []
        self.p.TaskChanged.connect(lambda changed: seen.append((changed.ModifiedOn, changed.ModifiedBy)))
        task.Title = "x"
        self.assertEqual(seen, [(ZERO_DATE, "")])

    def test_a_modification_stamp_is_overwritten_at_once_unless_the_task_is_paused(self):
        task = quillbox.Task()
        task.ModifiedOn, task.ModifiedBy = datetime(2001, 1, 1), "Ann"
        self.assertNow(task.ModifiedOn)
        self.assertNotEqual(task.ModifiedBy, "Ann")
        task.PauseEvents = True
        task.ModifiedOn, task.ModifiedBy = datetime(2001, 1, 1), "Ann"
        self.assertEqual((task.ModifiedOn, task.ModifiedBy), (datetime(2001, 1, 1), "Ann"))

    def test_a_pause_holds_back_stamps_and_events_alike(self):
        task = self.p.NewTask()
        task.PauseEvents = True
        events = Events(self.p)
        for name, value in NOTIFYING.items():
            setattr(task, name, value)
            self.assertEqual(getattr(task, name), value)
        task.FireChanged()
        self.assertEqual((events, self.p.Dirty), ([], False))
        self.assertEqual(task.ModifiedBy, "Ann")

    def test_a_key_is_stored_and_told_to_nobody(self):
        task = self.p.NewTask()
        events = Events(self.p)
        task.Key = "{K}"
        self.assertEqual((task.Key, events, task.ModifiedOn), ("{K}", [], ZERO_DATE))

    def test_fire_changed_tells_and_stamps(self):
        task = self.p.NewTask()
        events = Events(self.p)
        task.FireChanged()
        self.assertEqual(events, [("TaskChanged", task), ("DirtyStateChanged",)])
        self.assertNow(task.ModifiedOn)


class Collection(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.tasks = self.p.Tasks

    def test_adding_and_removing_mark_the_tasks_alone(self):
        task = self.p.NewTask()
        self.tasks.Add(task, task.Key)
        self.assertEqual((bool(self.tasks.Dirty), bool(self.p.ProjectDirty)), (True, False))
        self.assertEqual((self.tasks.Item(1), self.tasks.Item(task.Key.lower())), (task, task))
        self.assertIsNone(self.tasks.Item("none"))
        self.p.Dirty = False
        with self.assertFails("none"):
            self.tasks.Remove("none")
        self.assertFalse(self.tasks.Dirty)
        self.tasks.Remove(1)
        self.assertTrue(self.tasks.Dirty)
        self.assertEqual(len(self.tasks), 0)

    def test_a_paused_collection_holds_events_back_and_marks_all_the_same(self):
        self.tasks.PauseEvents = True
        events = Events(self.p, without=("DirtyStateChanged",))
        task = self.p.NewTask()
        self.tasks.Add(task, task.Key)
        task.Title = "x"
        self.tasks.Remove(1)
        self.assertEqual((events, bool(self.tasks.Dirty)), ([], True))

    def test_dirty_is_told_for_true_and_for_false(self):
        events = Events(self.p)
        self.tasks.Dirty = False
        self.tasks.Dirty = True
        self.assertEqual(events, [("DirtyStateChanged",)] * 2)

    def test_a_collection_without_a_project_fails_when_it_is_marked(self):
        tasks, task = quillbox.Tasks(), quillbox.Task()
        for value in (True, False):
            with self.assertFails():
                tasks.Dirty = value
        with self.assertFails():
            tasks.Add(task, "k")
        self.assertEqual(list(tasks), [task])


class TaskFile(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()

    def test_the_element_has_its_attributes_in_order_and_the_notes_as_text(self):
        task = self.p.NewTask()
        task.PauseEvents = True
        for name, value in NOTIFYING.items():
            setattr(task, name, value)
        task.CreatedOn = datetime(2004, 3, 5, 17, 9, 2)
        self.assertXml(
            saved(task, "Task"),
            f'<Task Key="{task.Key}" Priority="High" Title="title" AssignedTo="Cy" TopicID="{{T}}" Status="Done" '
            'CreatedOn="05-03-2004 17:09:02" CreatedBy="Ben" ModifiedOn="01-01-2001 00:00:00" ModifiedBy="Ann">note'
            "</Task>")

    def test_every_field_comes_back_with_its_time(self):
        task = quillbox.Task()
        task.Load(element(ELEMENT % ("05-03-2004 17:09:02", "30-12-1899 00:00:00")))
        self.assertEqual(
            [task.Key, task.Priority, task.Title, task.Notes, task.AssignedTo, task.TopicID, task.Status, task.CreatedOn,
             task.CreatedBy, task.ModifiedOn, task.ModifiedBy],
            ["{K}", "High", "Write", "notes & more", "Ann", "{T}", "Done", datetime(2004, 3, 5, 17, 9, 2), "Ben",
             ZERO_DATE, "Cy"])

    def test_the_zero_date_is_written_and_read(self):
        task = self.p.NewTask()
        self.assertEqual(saved(task).get("ModifiedOn"), "30-12-1899 00:00:00")

    def test_a_pause_does_not_survive_a_load(self):
        task = quillbox.Task()
        task.PauseEvents = True
        task.Load(element(ELEMENT % ("05-03-2004 17:09:02", "05-03-2004 17:09:02")))
        self.assertFalse(task.PauseEvents)

    def test_a_load_tells_nothing_and_ends_clean(self):
        events = Events(self.p, without=("DirtyStateChanged",))
        self.p.Tasks.Load(element("<x>" + ELEMENT % (("05-03-2004 17:09:02",) * 2) + "</x>"))
        self.assertEqual((self.p.Tasks.Item("{K}").QbProject, events, bool(self.p.Tasks.Dirty)), (self.p, [], False))

    def test_a_date_or_an_attribute_that_is_not_there_ends_the_load_and_leaves_the_pause(self):
        good = "05-03-2004 17:09:02"
        for created, modified in (("", good), ("05-03-2004", good), (good, "aa-bb-cccc dd:ee:ff"), ("99-99-2004 17:09:02", good)):
            task = quillbox.Task()
            with self.subTest(created), self.assertFails():
                task.Load(element(ELEMENT % (created, modified)))
            self.assertTrue(task.PauseEvents)
        for name in ("Key", "Priority", "Title", "AssignedTo", "TopicID", "Status", "CreatedOn", "CreatedBy", "ModifiedOn",
                     "ModifiedBy"):
            with self.subTest(name), self.assertFails(name):
                quillbox.Task().Load(element((ELEMENT % (good, good)).replace(f" {name}=", " x=")))

    def test_the_own_file(self):
        project = self.project(separate=True)
        task = project.NewTask()
        project.Tasks.Add(task, task.Key)
        self.assertEqual(project.Tasks.LocalSpec, self.path("ProjectData", "Tasks.xml"))
        self.assertXml(saved(project.Tasks, "Tasks"), "<Tasks/>")
        root = self.xml("ProjectData/Tasks.xml")
        self.assertEqual((root.tag, [child.tag for child in root]), ("Tasks", ["Task"]))
        again = self.project(separate=True)
        again.Tasks.Load(None)
        self.assertEqual(again.Tasks.Item(1).Key, task.Key)


if __name__ == "__main__":
    unittest.main()
