"""Builds the pages of a made-up project of 10,000 topics of 4 KB, twice, without the compiler.

    PYTHONPATH=out/dev/python python3 bench/build_pages.py"""

import tempfile
import time

import quillbox

TOPICS = 10000
TEXT = "<p>" + "word and more text here. " * 150 + "</p>"

with tempfile.TemporaryDirectory() as folder:
    project = quillbox.QbProject()
    project.PauseEvents = True
    project.Filename.Path = folder + "/big.qbp"
    project.Title, project.OutputFileName = "Big", folder + "/big.chm"
    for number in range(TOPICS):
        topic = project.NewTopic()
        topic.PauseEvents = True
        topic.Name, topic.Title = f"Topic{number}", f"Title {number}"
        links = "".join(f'<a href="Topic{(number * 7 + k) % TOPICS}.html">x</a>' for k in range(6))
        topic.TopicSectionData["BodyText"] = TEXT + links
        topic.PauseEvents = False
        project.Topics.Add(topic, topic.Key)
    for name in ("first build", "second build, nothing changed"):
        start = time.process_time()
        project.Build(None, "", False, False, False)
        print(f"{name}: {(time.process_time() - start) / TOPICS * 1000:.3f} ms a topic")
