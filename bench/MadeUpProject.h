#pragma once

#include <string>

#include "content/GlossaryItems.h"
#include "content/OtherFiles.h"
#include "content/QbNode.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox::bench {

inline std::string numbered(const char* stem, int number) { return stem + std::to_string(number); }

// About 4 KB of HTML with six links.
inline std::string body(int number, int topics) {
    std::string html = "<h1>Heading " + std::to_string(number) + "</h1>\n";
    for (int paragraph = 0; paragraph < 6; ++paragraph) {
        html += "<p class=\"text\">The quick brown fox &amp; the lazy dog read page " +
                std::to_string(paragraph) + ", see <a href=\"" +
                numbered("Topic", (number * 7 + paragraph * 131) % topics) + ".html\">there</a>. ";
        while (html.size() % 660 < 600)
            html += "Some words of plain text follow here, as an author would write. ";
        html += "</p>\n";
    }
    return html;
}

// Topics with bodies, keywords and see-also links, and a contents tree two levels deep.
inline Ref<QbProject> madeUpProject(int topics) {
    auto project = make<QbProject>();
    project->SetPauseEvents(true);
    project->SetTitle("Made up");
    Ref<QbNode> book;
    for (int i = 0; i < topics; ++i) {
        const auto topic = project->NewTopic();
        topic->SetPauseEvents(true);
        topic->SetName(numbered("Topic", i));
        topic->SetTitle(numbered("Title of topic ", i));
        topic->SetTopicSectionData("BodyText", body(i, topics));
        topic->AddKeyword(numbered("keyword ", i % 500));
        topic->AddKeyword("group|" + numbered("sub ", i % 100));
        topic->SetPauseEvents(false);
        project->Topics->Add(topic, topic->Key);
        const bool top = i % 20 == 0;
        const auto node =
            (top || !book ? project->QbNodes() : book->ChildNodes)->NewNode(top ? nullptr : book);
        node->SetQbNodeType(ntSingleTopic);
        node->SetTopicID(topic->Key);
        if (top) book = node;
    }
    return project;
}

}  // namespace quillbox::bench
