# Turns CHANGELOG.md into the form of somebody else; what is not released yet is left out.
#   awk -v form=metainfo -f changelog.awk CHANGELOG.md    the releases of the AppStream metainfo
#   awk -v form=debian ...                                a changelog as Debian packages hold it
#   awk -v form=newest ...                                the newest version and its date

function Plain(text) {
  gsub(/[`*]/, "", text)
  if (form == "metainfo") { gsub(/&/, "\\&amp;", text); gsub(/</, "\\&lt;", text); gsub(/>/, "\\&gt;", text) }
  return text
}
function EndItem() {
  if (item != "") print "          <li>" item "</li>"
  item = ""
}
function EndList() {
  if (form != "metainfo") return
  EndItem()
  if (inList) print "        </ul>"
  inList = 0
}
function EndRelease() {
  if (version == "") return
  EndList()
  if (form == "metainfo") print "      </description>\n    </release>"
  if (form == "debian") print "\n -- " maintainer "  " Rfc2822(date) "\n"
}
function Rfc2822(day,   command, line) {
  command = "LC_ALL=C date -u -R -d " day
  command | getline line
  close(command)
  return line
}

/^## / {
  EndRelease()
  version = ""
  if ($0 !~ /^## \[[0-9.]+\] - [0-9]+-[0-9][0-9]-[0-9][0-9]$/) next
  version = substr($2, 2, length($2) - 2)
  date = $4
  if (form == "newest") { print version ";" date; version = ""; exit }
  if (form == "metainfo") print "    <release version=\"" version "\" date=\"" date "\">\n      <description>"
  if (form == "debian") print "brindle (" version ") unstable; urgency=medium"
}
version == "" { next }
/^### / {
  EndList()
  if (form == "metainfo") print "        <p>" Plain(substr($0, 5)) "</p>"
  if (form == "debian") print "\n  [ " substr($0, 5) " ]"
}
/^- / {
  if (form == "debian") print "  * " Plain(substr($0, 3))
  if (form == "metainfo") {
    EndItem()
    if (!inList) print "        <ul>"
    inList = 1
    item = Plain(substr($0, 3))
  }
}
/^  [^ ]/ {
  if (form == "debian") print "    " Plain(substr($0, 3))
  if (form == "metainfo") item = item " " Plain(substr($0, 3))
}
END { EndRelease() }
