# cmake -D PAGES=folder -D TO=folder -P HelpProject.cmake
#
# Puts a head onto each page that contents.txt names and writes the project that the help is made of: the contents from the
# headings, the index from whatever has an id.
file(STRINGS "${PAGES}/contents.txt" names REGEX "^[^#]")
set(sections "")
set(keywords "")
set(files "<file>style.css</file>\n")
foreach(name IN LISTS names)
    file(READ "${PAGES}/${name}" page)
    # Lists end at semicolons, and pages may hold some.
    string(REPLACE ";" "&#59" page "${page}")
    if(NOT page MATCHES "<h1>([^<]*)</h1>")
        message(FATAL_ERROR "${name} has no <h1>")
    endif()
    set(title "${CMAKE_MATCH_1}")
    string(APPEND sections "<section title=\"${title}\" ref=\"${name}\">\n")
    string(REGEX MATCHALL "<(h2|dt) id=\"[^\"]*\">[^<]*<" marked "${page}")
    foreach(entry IN LISTS marked)
        string(REGEX MATCH "<(h2|dt) id=\"([^\"]*)\">([^<]*)<" whole "${entry}")
        set(ref "${name}#${CMAKE_MATCH_2}")
        string(APPEND keywords "<keyword name=\"${CMAKE_MATCH_3}\" id=\"${CMAKE_MATCH_2}\" ref=\"${ref}\"/>\n")
        if(CMAKE_MATCH_1 STREQUAL "h2")
            string(APPEND sections "<section title=\"${CMAKE_MATCH_3}\" ref=\"${ref}\"/>\n")
        endif()
    endforeach()
    string(APPEND sections "</section>\n")
    string(APPEND files "<file>${name}</file>\n")
    string(REPLACE "&#59" ";" page "${page}")
    # The viewer knows little of style sheets.
    string(REPLACE "<th>" "<th align=\"left\">" page "${page}")
    string(REPLACE "<table>" "<table cellpadding=\"3\">" page "${page}")
    # The viewer finds places by <a name>.
    string(REGEX REPLACE "<(h2|dt) id=\"([^\"]*)\">" "<\\1><a name=\"\\2\"></a>" page "${page}")
    file(WRITE "${TO}/${name}"
         "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>${title}</title>\n"
         "<link rel=\"stylesheet\" href=\"style.css\">\n</head>\n<body>\n${page}</body>\n</html>\n")
endforeach()
file(COPY "${PAGES}/style.css" DESTINATION "${TO}")
file(WRITE "${TO}/tarnwick.qhp"
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<QtHelpProject version=\"1.0\">\n"
     "<namespace>tarnwick</namespace>\n<virtualFolder>help</virtualFolder>\n<filterSection>\n"
     "<toc>\n${sections}</toc>\n<keywords>\n${keywords}</keywords>\n<files>\n${files}</files>\n"
     "</filterSection>\n</QtHelpProject>\n")
