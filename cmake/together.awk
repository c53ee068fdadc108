# Groups sources that the compiler can read as one file, so that it reads the headers they share once. Prints a group a
# line. Called with -v roots=FOLDER:... (where #include "..." is looked for) -v most=LINES (the size of a group) and the
# sources in order.
#
# What a source keeps to itself (in an anonymous namespace, as a constant, alias or macro) must not be a word of a source
# read with it, nor of a header that only one of the two includes: such sources go to different groups. So do sources that
# see different namespaces within ours: in tarnwick, "testing::" means another namespace once there is tarnwick::testing.

function name_of(text) {
  sub(/[^A-Za-z0-9_].*/, "", text)
  return text
}

function add_words(text, set,   list, n, i) {
  n = split(text, list, /[^A-Za-z0-9_]+/)
  for (i = 1; i <= n; i++) set[list[i]]
}

# Reads a header once: what it includes and its text.
function read_header(path,   folders, n, i, line, inner) {
  known[path] = ""
  n = split(roots, folders, ":")
  for (i = 1; i <= n && text[path] == ""; i++) {
    while ((getline line < (folders[i] "/" path)) > 0) {
      if (line ~ /^#include "/) {
        split(line, inner, "\"")
        known[path] = known[path] " " inner[2]
      } else {
        sub(/\/\/.*/, "", line)
        text[path] = text[path] " " line
        if (line ~ /^namespace [a-z]+::/) opens[path] = opens[path] " " inner_namespace(line)
      }
    }
    close(folders[i] "/" path)
  }
}

# The own headers that PATH includes, directly or through others, become keys of reached.
function reach(path, reached,   n, i, list) {
  if (!(path in known)) read_header(path)
  n = split(known[path], list, " ")
  for (i = 1; i <= n; i++) if (!(list[i] in reached)) {
    reached[list[i]]
    reach(list[i], reached)
  }
}

function words_of_header(path,   set, w) {
  if (!(path in header_words)) {
    header_words[path] = 1
    add_words(text[path], set)
    for (w in set) if (w in anyones) in_header[path, w]
  }
}

function inner_namespace(line) {
  sub(/^[^:]*::/, "", line)
  return name_of(line)
}

# The namespaces within ours that the source f opens, or a header it reaches, in the order in which all were met.
function seen_namespaces(f,   h, i, n, list, opened, seen, sight) {
  opened = opens[f]
  for (h in reached) opened = opened opens[h]
  n = split(opened, list, " ")
  for (i = 1; i <= n; i++) {
    seen[list[i]]
    if (!(list[i] in met)) {
      met[list[i]]
      inner[++namespaces] = list[i]
    }
  }
  for (i = 1; i <= namespaces; i++) if (inner[i] in seen) sight = sight " " inner[i]
  return sight
}

# The names declared on a line that starts in the first column.
function take_names(line,   name) {
  while (match(line, /[A-Za-z_][A-Za-z0-9_]*( =|[({;]|\[)/)) {
    name = name_of(substr(line, RSTART, RLENGTH))
    if (name !~ /^(void|int|bool|char|double|float|long|short|unsigned|auto|decltype|sizeof|noexcept|requires|[A-Z][A-Z0-9_]*)$/)
      keep(name)
    line = substr(line, RSTART + RLENGTH)
  }
}

function keep(name) {
  own[file, name]
  owns[file] = owns[file] " " name
  anyones[name]
}

FNR == 1 {
  file = FILENAME
  files[++count] = file
  hidden = 0
}
{ lines[file]++ }
/foreach_target|\.moc"/ { alone[file] }
/^#include "/ { split($0, part, "\""); included[file] = included[file] " " part[2]; next }
/^}  \/\/ namespace$/ { hidden = 0 }
/^namespace [a-z]+::/ { opens[file] = opens[file] " " inner_namespace($0) }
{
  gsub(/"([^"\\]|\\.)*"/, "\"\"")
  sub(/\/\/.*/, "")
  body[file] = body[file] " " $0
}
/^namespace \{/ { hidden = 1; next }
hidden && /^(struct|class|union|enum|enum class) [A-Za-z_]/ { keep(name_of($2 == "class" ? $3 : $2)); next }
/^using [A-Za-z_]+ =/ { keep($2); next }
/^using [A-Za-z_:]+;/ { sub(/.*[: ]/, ""); keep(name_of($0)); next }
/^#define / { keep(name_of($2)); next }
/^(namespace|template|public|private|using|return)/ { next }
/^[A-Za-z]/ && (hidden || /^(static|const|constexpr|inline const|thread_local)/) { take_names($0) }

# Whether what group g keeps to itself and what the source f brings along leave each other alone, and the other way round.
function at_peace(g, f,   n, i, list, h, name) {
  n = split(owned[g], list, " ")
  for (i = 1; i <= n; i++) {
    if (list[i] in words) return 0
    for (h in reached) if (!((g, h) in group_reached) && ((h, list[i]) in in_header)) return 0
  }
  n = split(owns[f], list, " ")
  for (i = 1; i <= n; i++) {
    name = list[i]
    if ((g, name) in group_words) return 0
    for (h in all_reached) if (((g, h) in group_reached) && !(h in reached) && ((h, name) in in_header)) return 0
  }
  return 1
}

function place(f,   g, placed, w, h, sight) {
  split("", words)
  split("", reached)
  add_words(body[f], words)
  n_included = split(included[f], list_included, " ")
  for (w = 1; w <= n_included; w++) {
    reached[list_included[w]]
    reach(list_included[w], reached)
  }
  for (h in reached) {
    all_reached[h]
    words_of_header(h)
  }
  sight = seen_namespaces(f)
  if (!(f in alone))
    for (g = 1; g <= groups && !placed; g++)
      if (size[g] + lines[f] <= most && sights[g] == sight && at_peace(g, f)) placed = g
  if (!placed) placed = ++groups
  sights[placed] = sight
  members[placed] = members[placed] " " f
  size[placed] += (f in alone) ? most : lines[f]
  owned[placed] = owned[placed] owns[f]
  for (w in words) if (w in anyones) group_words[placed, w]
  for (h in reached) group_reached[placed, h]
}

END {
  for (i = 1; i <= count; i++) place(files[i])
  for (i = 1; i <= groups; i++) print substr(members[i], 2)
}
