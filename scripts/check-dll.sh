#!/usr/bin/env bash
# Checks Metadata.dll as the viewer will meet it: a PE32 DLL of at most 1 MB,
# its debug information in Metadata.dll.debug beside it, that exports the
# thirteen functions under undecorated names and imports system DLLs only.
set -euo pipefail
dll=$1
dump=$(i686-w64-mingw32-objdump -p "$dll")
fail=0
grep -q 'Magic.*010b.*(PE32)' <<<"$dump" || { echo "not a PE32 image"; fail=1; }
size=$(stat -c %s "$dll")
echo "size: $size bytes"
[ "$size" -le 1572864 ] || { echo "larger than 1.5 MiB"; fail=1; }
sections=$(i686-w64-mingw32-objdump -h "$dll")
if grep -q ' \.debug_' <<<"$sections" || ! grep -q ' \.gnu_debuglink ' <<<"$sections"; then
  echo "debug information not split off into a linked file"; fail=1
fi
[ -s "$dll.debug" ] || { echo "missing $dll.debug"; fail=1; }
for name in GetPlugInInfo ClosePlugin Get_EXIF_Window GetExifInfos LoadData_EXIF_W LoadTag_EXIF_W \
            Show_EXIF_Info_W Create_EXIF_Data_W LoadData_IPTC_W LoadTag_IPTC_W Show_IPTC_Info_W \
            Load_Comment_W Show_JPG_Comment_W; do
  grep -Eq "^\s+\[ *[0-9]+\] $name\$" <<<"$dump" || { echo "export missing or decorated: $name"; fail=1; }
done
imports=$(grep 'DLL Name:' <<<"$dump" | awk '{print $3}')
echo "imports:" $imports
if grep -Eiq 'libstdc|libgcc|winpthread|libwinpthread' <<<"$imports"; then
  echo "imports a MinGW runtime DLL"; fail=1
fi
[ $fail -eq 0 ] && echo "Metadata.dll: PE32, at most 1 MB, debug information beside it, 13 undecorated exports, system imports only"
exit $fail
