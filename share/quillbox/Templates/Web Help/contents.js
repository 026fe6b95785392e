// The contents, told as steps: a node, one level down, one level up.
webhelp.contents = function (node, down, up) {
%%tableofcontents:BookPrefix=down();,BookSuffix=up();,NodeScrap=_NODE_SCRIPT%%
};
