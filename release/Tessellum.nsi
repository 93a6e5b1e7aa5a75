; Tessellum's installer. It puts the plug-in into the Plug-ins folder of every Photoshop
; that the registry names, in the build of that Photoshop's architecture, and into a
; folder the user picks; it keeps the guide, the licence, both builds and the uninstaller
; in a folder of its own, and records where the plug-in went so that the uninstaller
; removes exactly that. Built by scripts/pack-release.sh:
;   makensis -DVERSION=1.5 -DSTAGE=<the staged files> -DOUTFILE=<setup.exe> Tessellum.nsi
Unicode true
ManifestDPIAware true
SetCompressor /SOLID lzma
RequestExecutionLevel admin

!include LogicLib.nsh
!include x64.nsh
!include FileFunc.nsh
!include nsDialogs.nsh
!include MUI2.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tessellum"
!define RECORD "$INSTDIR\installed.ini"  ; the folders the plug-in went into
!define MAX_SHOWN 4                      ; Photoshops listed on the page

Name "Tessellum ${VERSION}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\Tessellum"
BrandingText "Quarry"

VIProductVersion "${VERSION}.0.0"
VIFileVersion "${VERSION}.0.0"
VIAddVersionKey /LANG=1033 "ProductName" "Tessellum"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileDescription" "Tessellum ${VERSION} installer"
VIAddVersionKey /LANG=1033 "CompanyName" "Quarry"
VIAddVersionKey /LANG=1033 "LegalCopyright" "Copyright (c) 2026 Quarry"

Var Found       ; how many Photoshops the registry names; each a section of FOLDERS
Var Arch        ; x64 or x86: the registry view being read
Var Page
Var OtherBox
Var OtherText
Var OtherArch
!define FOLDERS "$PLUGINSDIR\folders.ini"  ; Label, Folder, Arch, Chosen, Box of each

!define MUI_DIRECTORYPAGE_TEXT_TOP "Tessellum keeps its user's guide, its licence, both builds of the plug-in and its uninstaller in this folder. The plug-in itself goes into the folders of the page before."
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\Tessellum.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Show the user's guide"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE.txt"
Page custom FoldersPage FoldersPageLeave " "  ; the title then reads as on the other pages
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Every Photoshop that the registry view in force names, with the folder its
; ApplicationPath names, for the build of $Arch.
Function FindPhotoshops
  StrCpy $R0 0
  ${Do}
    EnumRegKey $R1 HKLM "SOFTWARE\Adobe\Photoshop" $R0
    ${IfThen} $R1 == "" ${|} ${ExitDo} ${|}
    IntOp $R0 $R0 + 1
    ReadRegStr $R2 HKLM "SOFTWARE\Adobe\Photoshop\$R1" "ApplicationPath"
    StrCpy $R3 $R2 "" -1
    ${If} $R3 == "\"
      StrCpy $R2 $R2 -1
    ${EndIf}
    ; A key left behind by a Photoshop that is gone names no folder.
    ${If} $R2 != ""
    ${AndIf} ${FileExists} "$R2\*.*"
      IntOp $Found $Found + 1
      ${GetFileName} $R2 $R3
      ${If} $Arch == x64
        WriteINIStr "${FOLDERS}" $Found Label "$R3 (64-bit)"
      ${Else}
        WriteINIStr "${FOLDERS}" $Found Label "$R3 (32-bit)"
      ${EndIf}
      WriteINIStr "${FOLDERS}" $Found Folder "$R2\Plug-ins"
      WriteINIStr "${FOLDERS}" $Found Arch $Arch
      WriteINIStr "${FOLDERS}" $Found Chosen 1
    ${EndIf}
  ${Loop}
FunctionEnd

Function .onInit
  InitPluginsDir
  StrCpy $Found 0
  ; A 32-bit program sees the 32-bit view of the registry unless it asks for the other:
  ; a 64-bit Photoshop is named in the 64-bit view, a 32-bit one in the 32-bit view.
  ${If} ${RunningX64}
    SetRegView 64
    StrCpy $Arch x64
    Call FindPhotoshops
  ${EndIf}
  SetRegView 32
  StrCpy $Arch x86
  Call FindPhotoshops
  WriteINIStr "${FOLDERS}" Other Chosen 0
  WriteINIStr "${FOLDERS}" Other Arch x64
FunctionEnd

; $R9: how many of the Photoshops found the page shows (the rest stay chosen).
Function CountShown
  StrCpy $R9 $Found
  ${IfThen} $R9 > ${MAX_SHOWN} ${|} StrCpy $R9 ${MAX_SHOWN} ${|}
FunctionEnd

Function FoldersPage
  !insertmacro MUI_HEADER_TEXT "Paint programs" "Choose the plug-ins folders that get Tessellum."
  nsDialogs::Create 1018
  Pop $Page
  ${If} $Found == 0
    ${NSD_CreateLabel} 0 0 100% 20u "No Photoshop is named in the registry. Choose the plug-ins folder of your paint program below, or go on: both builds stay in Tessellum's own folder, for you to copy."
  ${Else}
    ${NSD_CreateLabel} 0 0 100% 10u "Tessellum goes into the Plug-ins folder of each Photoshop ticked here:"
  ${EndIf}
  Pop $R0
  Call CountShown
  StrCpy $R0 0
  ${DoWhile} $R0 < $R9
    IntOp $R0 $R0 + 1
    ReadINIStr $R1 "${FOLDERS}" $R0 Label
    ReadINIStr $R2 "${FOLDERS}" $R0 Folder
    IntOp $R3 $R0 * 20  ; each a name ticked, and its folder below it
    IntOp $R3 $R3 - 8
    ${NSD_CreateCheckbox} 0 "$R3u" 100% 10u "$R1"
    Pop $R4
    IntOp $R3 $R3 + 10
    nsDialogs::CreateControl STATIC ${DEFAULT_STYLES}|${SS_PATHELLIPSIS} 0 12u "$R3u" 288u 9u "$R2"
    Pop $R5
    WriteINIStr "${FOLDERS}" $R0 Box $R4
    ReadINIStr $R1 "${FOLDERS}" $R0 Chosen
    ${If} $R1 == 1
      ${NSD_Check} $R4
    ${EndIf}
  ${Loop}

  ${NSD_CreateCheckbox} 0 96u 100% 18u "The plug-ins folder of another program, the one that its settings name for Photoshop-compatible filters:"
  Pop $OtherBox
  ReadINIStr $R1 "${FOLDERS}" Other Folder
  ${NSD_CreateDirRequest} 12u 117u 156u 12u "$R1"
  Pop $OtherText
  ${NSD_CreateBrowseButton} 172u 116u 50u 14u "Browse..."
  Pop $R0
  ${NSD_OnClick} $R0 BrowseOther
  ${NSD_CreateDropList} 228u 117u 72u 40u ""
  Pop $OtherArch
  ${NSD_CB_AddString} $OtherArch "64-bit program"
  ${NSD_CB_AddString} $OtherArch "32-bit program"
  ReadINIStr $R1 "${FOLDERS}" Other Arch
  ${If} $R1 == x86
    ${NSD_CB_SelectString} $OtherArch "32-bit program"
  ${Else}
    ${NSD_CB_SelectString} $OtherArch "64-bit program"
  ${EndIf}
  ReadINIStr $R1 "${FOLDERS}" Other Chosen
  ${If} $R1 == 1
    ${NSD_Check} $OtherBox
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function BrowseOther
  ${NSD_GetText} $OtherText $R0
  nsDialogs::SelectFolderDialog "The plug-ins folder of the paint program:" $R0
  Pop $R0
  ${If} $R0 != error
    ${NSD_SetText} $OtherText $R0
    ${NSD_Check} $OtherBox
  ${EndIf}
FunctionEnd

Function FoldersPageLeave
  Call CountShown
  StrCpy $R0 0
  ${DoWhile} $R0 < $R9
    IntOp $R0 $R0 + 1
    ReadINIStr $R4 "${FOLDERS}" $R0 Box
    ${NSD_GetState} $R4 $R1
    ${If} $R1 == ${BST_CHECKED}
      WriteINIStr "${FOLDERS}" $R0 Chosen 1
    ${Else}
      WriteINIStr "${FOLDERS}" $R0 Chosen 0
    ${EndIf}
  ${Loop}
  ${NSD_GetText} $OtherText $R2
  WriteINIStr "${FOLDERS}" Other Folder $R2
  ${NSD_GetText} $OtherArch $R1
  ${If} $R1 == "32-bit program"
    WriteINIStr "${FOLDERS}" Other Arch x86
  ${Else}
    WriteINIStr "${FOLDERS}" Other Arch x64
  ${EndIf}
  ${NSD_GetState} $OtherBox $R1
  ${If} $R1 == ${BST_CHECKED}
    ${If} $R2 == ""
      MessageBox MB_OK|MB_ICONEXCLAMATION "Choose the plug-ins folder of the other program, or untick it."
      Abort
    ${EndIf}
    WriteINIStr "${FOLDERS}" Other Chosen 1
  ${Else}
    WriteINIStr "${FOLDERS}" Other Chosen 0
  ${EndIf}
FunctionEnd

; The plug-in of architecture $R3 into folder $R2, and the folder into the record.
Function PutPlugin
  SetOutPath $R2
  ${If} $R3 == x86
    File "${STAGE}\x86\Tessellum.8bf"
  ${Else}
    File "${STAGE}\x64\Tessellum.8bf"
  ${EndIf}
  ReadINIStr $R5 "${RECORD}" Plug-ins Count
  IntOp $R5 $R5 + 0
  StrCpy $R6 0
  ${DoWhile} $R6 < $R5  ; a folder of an earlier install is recorded once
    IntOp $R6 $R6 + 1
    ReadINIStr $R7 "${RECORD}" Plug-ins $R6
    ${IfThen} $R7 == $R2 ${|} Return ${|}
  ${Loop}
  IntOp $R5 $R5 + 1
  WriteINIStr "${RECORD}" Plug-ins $R5 $R2
  WriteINIStr "${RECORD}" Plug-ins Count $R5
FunctionEnd

Section "Tessellum"
  SetOutPath "$INSTDIR"
  File "${STAGE}\Tessellum.html"
  File "${STAGE}\LICENSE.txt"
  SetOutPath "$INSTDIR\x64"
  File "${STAGE}\x64\Tessellum.8bf"
  SetOutPath "$INSTDIR\x86"
  File "${STAGE}\x86\Tessellum.8bf"

  StrCpy $R0 0
  ${DoWhile} $R0 < $Found
    IntOp $R0 $R0 + 1
    ReadINIStr $R1 "${FOLDERS}" $R0 Chosen
    ${If} $R1 == 1
      ReadINIStr $R2 "${FOLDERS}" $R0 Folder
      ReadINIStr $R3 "${FOLDERS}" $R0 Arch
      DetailPrint "Tessellum for $R3 into $R2"
      Call PutPlugin
    ${EndIf}
  ${Loop}
  ReadINIStr $R1 "${FOLDERS}" Other Chosen
  ${If} $R1 == 1
    ReadINIStr $R2 "${FOLDERS}" Other Folder
    ReadINIStr $R3 "${FOLDERS}" Other Arch
    DetailPrint "Tessellum for $R3 into $R2"
    Call PutPlugin
  ${EndIf}

  WriteUninstaller "$INSTDIR\Uninstall.exe"
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "Tessellum ${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Quarry"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $R0 $R1 $R2
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $R0
SectionEnd

; Only what the installer put there. The library file (Tessellum.dat) and the registry
; values that the plug-in keeps (Software\Quarry\Tessellum) are the user's, and the
; plug-ins folders are the paint programs': they stay, even where they are left empty.
Section "Uninstall"
  ReadINIStr $R0 "${RECORD}" Plug-ins Count
  IntOp $R0 $R0 + 0
  StrCpy $R1 0
  ${DoWhile} $R1 < $R0
    IntOp $R1 $R1 + 1
    ReadINIStr $R2 "${RECORD}" Plug-ins $R1
    Delete "$R2\Tessellum.8bf"
  ${Loop}
  Delete "$INSTDIR\x64\Tessellum.8bf"
  Delete "$INSTDIR\x86\Tessellum.8bf"
  RMDir "$INSTDIR\x64"
  RMDir "$INSTDIR\x86"
  Delete "$INSTDIR\Tessellum.html"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "${RECORD}"
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"  ; not emptied by force: a library kept here stays, and its folder
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
