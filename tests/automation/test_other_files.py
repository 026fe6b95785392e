import os
import unittest

import quillbox
from support import Events, MachineTest, element, saved


class FilesTest(MachineTest):
    def setUp(self):
        super().setUp()
        self.p = self.project()
        self.others = self.p.OtherFiles

    def new(self, *names):
        return self.p.NewOtherFile(self.path(*names))

    def add(self, *names):
        file = self.new(*names)
        self.others.Add(file, file.Filename.FullPath)
        return file


class OneFile(FilesTest):
    def test_a_new_file_is_new_and_has_no_name(self):
        file = quillbox.OtherFile()
        self.assertEqual((file.Filename.FullPath, bool(file.NewFlag), file.QbProject), ("", True, None))
        with self.assertFails():
            file.RelativeFileName
        with self.assertFails():
            file.SSSpec

    def test_a_file_beside_the_project_has_a_bare_relative_name_and_stands_right_below_the_project_spec(self):
        self.p.SSProject = "$/Manual"
        file = self.new("style.css")
        self.assertEqual((file.RelativeFileName, file.SSSpec), ("style.css", "$/Manual/style.css"))
        self.assertEqual(file.LocalSpec, self.path("style.css"))

    def test_a_file_in_a_sub_folder_keeps_the_folder(self):
        self.p.SSProject = "$/Manual/"
        file = self.new("images", "a b", "pic.png")
        self.assertEqual(file.RelativeFileName, os.path.join("images", "a b", "pic.png"))
        self.assertEqual(file.SSSpec, "$/Manual/images/a b/pic.png")
        self.assertEqual(file.Filename.FullPath, self.path("images", "a b", "pic.png"))

    def test_a_file_that_is_not_below_the_project_keeps_its_full_name(self):
        for path in ("/elsewhere/pic.png", os.path.join(os.path.dirname(self.folder), "pic.png")):
            file = self.p.NewOtherFile(path)
            self.assertEqual(file.RelativeFileName, path)
            self.assertXml(saved(file, "file"), f'<file FileName="{path}"/>')

    def test_images_are_known_by_five_extensions_in_any_case(self):
        for name in ("a.png", "pic.PNG", "a.bmp", "a.gif", "a.Jpg", "a.pcx"):
            self.assertTrue(self.new("sub", name).IsImage, name)
        for name in ("pic.jpeg", "a.tif", "a.svg", "png", "a.png.txt", "a."):
            self.assertFalse(self.new("sub", name).IsImage, name)

    def test_stylesheets_are_known_by_their_extension_in_any_case(self):
        self.assertTrue(self.new("STYLE.CSS").IsStyleSheet)
        self.assertTrue(self.new("a.css").IsStyleSheet)
        self.assertFalse(self.new("a.css2").IsStyleSheet)
        self.assertFalse(self.new("css").IsStyleSheet)

    def test_a_property_may_be_called_too(self):
        file = self.new("a.png")
        self.assertTrue(file.IsImage())
        self.assertEqual((file.RelativeFileName(), file.LocalSpec()), ("a.png", self.path("a.png")))

    def test_the_name_is_saved_relative_and_read_back_absolute(self):
        file = self.new("images", "pic.png")
        self.assertXml(saved(file, "file"), f'<file FileName="{os.path.join("images", "pic.png")}"/>')
        self.assertFalse(file.NewFlag)
        self.assertEqual(file.Filename.FullPath, self.path("images", "pic.png"))

    def test_a_load_reads_either_separator_and_ends_with_an_absolute_name_that_is_not_new(self):
        for name in ("images/pic.png", "images\\pic.png", self.path("images", "pic.png")):
            file = quillbox.OtherFile()
            file.QbProject = self.p
            file.Load(element(f'<file filename="{name}"/>'))
            self.assertEqual((file.Filename.FullPath, bool(file.NewFlag)), (self.path("images", "pic.png"), False), name)
        with self.assertFails("FileName"):
            file.Load(element("<file/>"))

    def test_the_file_object_can_be_replaced(self):
        file, other = self.new("a.png"), quillbox.platform.FileSystemObject()
        other.Path = self.path("b.css")
        file.Filename = other
        self.assertEqual((file.Filename, bool(file.IsStyleSheet)), (other, True))


class Collection(FilesTest):
    def test_a_file_is_found_by_position_key_and_name_in_any_case(self):
        file = self.new("Images", "Pic.png")
        self.others.Add(file, "key")
        for key in (1, "KEY", self.path("Images", "Pic.png"), self.path("Images", "Pic.png").upper()):
            self.assertEqual(self.others.Item(key), file, key)
        for key in (2, 0, "none", "Pic.png"):
            self.assertIsNone(self.others.Item(key), key)

    def test_exists_looks_at_the_names_in_any_case_and_not_at_keys_or_the_disk(self):
        file = self.new("Pic.png")
        self.others.Add(file, "key")
        self.write("on-disk.png", "")
        self.assertTrue(self.others.Exists(self.path("PIC.PNG")))
        self.assertTrue(self.others.Exists(Filename=self.path("Pic.png").replace("/", "\\")))
        self.assertFalse(self.others.Exists("key"))
        self.assertFalse(self.others.Exists(self.path("on-disk.png")))
        self.new("other.png")
        self.assertFalse(self.others.Exists(self.path("other.png")))

    def test_a_file_that_was_renamed_is_found_by_its_new_name(self):
        file = self.add("a.png")
        file.Filename.Path = self.path("b.png")
        self.assertTrue(self.others.Exists(self.path("b.png")))
        self.assertFalse(self.others.Exists(self.path("a.png")))
        self.assertEqual(self.others.Item(self.path("b.png")), file)
        self.assertEqual(self.others.Item(self.path("a.png")), file)  # still the key

    def test_adding_and_removing_tell_and_mark(self):
        events = Events(self.p)
        file = self.add("a.png")
        self.assertEqual(events.taken(), [("OtherFileAdded", file), ("DirtyStateChanged",)])
        self.assertTrue(self.p.ProjectDirty)
        self.others.Remove(self.path("A.png"))
        self.assertEqual(events, [("OtherFileRemoved", file), ("DirtyStateChanged",)])

    def test_a_paused_collection_tells_nothing_and_marks_nothing(self):
        self.others.PauseEvents = True
        events = Events(self.p)
        self.add("a.png")
        self.others.Remove(1)
        self.assertEqual((events, self.p.Dirty, len(self.others)), ([], False, 0))

    def test_an_unknown_key_cannot_be_removed_and_a_key_that_is_taken_not_added(self):
        file = self.add("a.png")
        for key in ("none", 2):
            with self.subTest(key), self.assertFails():
                self.others.Remove(key)
        with self.assertFails():
            self.others.Add(file, self.path("A.PNG"))
        self.assertEqual(list(self.others), [file])

    def test_a_file_taken_out_twice_under_one_name_fails_the_second_time(self):
        one, two = self.add("a.png"), self.new("a.png")
        self.others.Add(two, "other key")
        self.others.Remove(1)
        with self.assertFails():
            self.others.Remove(1)
        self.assertEqual((len(self.others), one.LocalSpec), (0, two.LocalSpec))

    def test_a_file_taken_out_and_put_back_may_be_taken_out_again(self):
        file = self.add("a.png")
        for _ in range(3):
            self.others.Remove(1)
            self.others.Add(file, file.Filename.FullPath)
        self.assertEqual(list(self.others), [file])

    def test_removing_leaves_the_file_on_disk(self):
        path = self.write("a.png", "x")
        self.add("a.png")
        self.p.SaveToDisk()
        self.others.Remove(1)
        self.p.SaveToDisk()
        self.assertTrue(os.path.exists(path))

    def test_a_loaded_file_is_not_new(self):
        self.add("a.png")
        again = self.project_of(self.p.Save())
        self.assertFalse(again.OtherFiles.Item(1).NewFlag)

    def test_a_collection_without_a_project_is_a_plain_list(self):
        files = quillbox.OtherFiles()
        file = self.new("a.png")
        files.Add(file, "k")
        files.Remove("k")
        self.assertEqual((len(files), files.QbProject), (0, None))


if __name__ == "__main__":
    unittest.main()
