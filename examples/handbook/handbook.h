/* Help context identifiers of the handbook. The help file knows the numbers; programs use the names. */

#pragma once

#define IDH_WELCOME                100   // Welcome to Quillbox
#define IDH_INSTALLING             101   // Installing and building
#define IDH_FIRST_PROJECT          110   // Your first project
#define IDH_PROJECTS               120   // The project
#define IDH_TOPICS                 121   // Topics
#define IDH_CONTENTS_TREE          122   // The contents tree
#define IDH_GLOSSARY_TERMS         123   // Glossary terms
#define IDH_PLANNING_WORK          124   // Categories, statuses and tasks
#define IDH_OTHER_FILES            125   // Other files
#define IDH_BOOKLETS               126   // Booklets and browse sequences
#define IDH_VARIABLES              127   // Variables
#define IDH_TOPIC_BODIES           130   // Writing topic bodies
#define IDH_TAGS_IN_TOPICS         131   // Tags in topics
#define IDH_LANGUAGES              132   // Languages and characters
#define IDH_CHECKING_LINKS         200   // Checking links
#define IDH_BUILDING_HELP          210   // Building the help file
#define IDH_BUILDING_LOG           0xd3  // The log of a build
#define IDH_CONTEXT_IDS            212   // Context ids
#define IDH_TEMPLATES              220   // Page templates
#define IDH_FILE_FORMAT            230   // The file format
#define IDH_VERSION_CONTROL        231   // Version control
#define IDH_COMMAND_LINE           240   // The command line
#define IDH_AUTOMATION             250   // Automation
#define IDH_RECIPES                251   // Recipes
#define IDH_SETTINGS               300   // Settings
#define IDH_TROUBLESHOOTING        900   // Troubleshooting
#define IDH_TROUBLESHOOTING_LOAD   0x385 // A file does not load
#define IDH_LICENCE                910   // Licence
