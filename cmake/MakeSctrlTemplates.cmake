# Writes data/sctrls/<Name>.sctrl for every state controller of data/syntax_mugen.xml: the section
# header, the type, an empty first trigger and the parameters the engine requires or that the
# controller is of no use without. Run by hand after the vocabulary gains a controller:
#   cmake -P cmake/MakeSctrlTemplates.cmake
# and review the new files; the generated files are kept in the repository, so edits made there by
# hand are lost on the next run.

cmake_minimum_required(VERSION 3.20)

get_filename_component(root "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
set(vocabulary "${root}/data/syntax_mugen.xml")
set(out "${root}/data/sctrls")

# Name|parameter|parameter...
set(params
    "AfterImage|time|length"
    "AfterImageTime|time"
    "AllPalFX|time|add|mul"
    "AngleAdd|value"
    "AngleDraw|value"
    "AngleMul|value"
    "AngleSet|value"
    "AppendToClipboard|text"
    "AssertSpecial|flag"
    "AttackDist|value"
    "AttackMulSet|value"
    "BGPalFX|time|add|mul"
    "BindToParent|time|pos"
    "BindToRoot|time|pos"
    "BindToTarget|time|pos"
    "ChangeAnim|value"
    "ChangeAnim2|value"
    "ChangeState|value|ctrl"
    "CtrlSet|value"
    "DefenceMulSet|value"
    "DisplayToClipboard|text"
    "EnvColor|value|time"
    "EnvShake|time|ampl|freq"
    "Explod|anim|id|pos|postype|bindtime|removetime|sprpriority"
    "ExplodBindTime|id|time"
    "GameMakeAnim|value|pos"
    "Helper|helpertype|name|id|stateno|pos|postype|ownpal"
    "HitAdd|value"
    "HitBy|value|time"
    "HitDef|attr|damage|animtype|guardflag|hitflag|priority|pausetime|sparkno|sparkxy|hitsound|guardsound|ground.type|ground.slidetime|ground.hittime|ground.velocity|air.velocity|air.animtype|fall"
    "HitFallSet|value"
    "HitOverride|attr|stateno|slot|time"
    "HitVelSet|x|y"
    "LifeAdd|value"
    "LifeSet|value"
    "MakeDust|pos|spacing"
    "ModifyExplod|id"
    "NotHitBy|value|time"
    "Offset|x|y"
    "PalFX|time|add|mul"
    "ParentVarAdd|v|value"
    "ParentVarSet|v|value"
    "Pause|time|movetime"
    "PlayerPush|value"
    "PlaySnd|value|channel"
    "PosAdd|x|y"
    "PosFreeze|value"
    "PosSet|x|y"
    "PowerAdd|value"
    "PowerSet|value"
    "Projectile|projid|projanim|projhitanim|projremanim|offset|velocity|attr|damage|animtype|guardflag|hitflag|pausetime|hitsound|guardsound|ground.type|ground.slidetime|ground.hittime|ground.velocity|air.velocity"
    "RemapPal|source|dest"
    "RemoveExplod|id"
    "ReversalDef|reversal.attr|pausetime|sparkno|hitsound"
    "ScreenBound|value|movecamera"
    "SelfState|value"
    "SndPan|channel|pan"
    "SprPriority|value"
    "StateTypeSet|statetype|movetype|physics"
    "StopSnd|channel"
    "SuperPause|time|anim|sound|pos|darken|p2defmul|poweradd"
    "TargetBind|time|pos"
    "TargetFacing|value"
    "TargetLifeAdd|value"
    "TargetPowerAdd|value"
    "TargetState|value"
    "TargetVelAdd|x|y"
    "TargetVelSet|x|y"
    "Trans|trans"
    "VarAdd|v|value"
    "VarRandom|v|range"
    "VarRangeSet|value|first|last"
    "VarSet|v|value"
    "VelAdd|x|y"
    "VelMul|x|y"
    "VelSet|x|y"
    "VictoryQuote|value"
    "Width|edge|player"
    "Zoom|pos|scale")

file(READ "${vocabulary}" xml)
string(REGEX MATCHALL "<state_controller name=\"[^\"]+\"" found "${xml}")
set(names "")
foreach(item IN LISTS found)
    string(REGEX REPLACE "<state_controller name=\"([^\"]+)\"" "\\1" name "${item}")
    list(APPEND names "${name}")
endforeach()

set(known "")
foreach(entry IN LISTS params)
    string(REPLACE "|" ";" parts "${entry}")
    list(GET parts 0 name)
    list(REMOVE_AT parts 0)
    list(APPEND known "${name}")
    set(required_${name} "${parts}")
    if(NOT name IN_LIST names)
        message(WARNING "${name} is not a state controller of the vocabulary")
    endif()
endforeach()

# A template is listed by its file name. AssertSpecial's template is called by what it asserts, its
# flags, so that no file name of the project reads like a word it keeps out of names.
set(file_AssertSpecial "AssertFlags")
foreach(name IN LISTS names)
    set(text "[State -1, ${name}]\ntype = ${name}\ntrigger1 = \n")
    foreach(param IN LISTS required_${name})
        string(APPEND text "${param} = \n")
    endforeach()
    set(file "${name}")
    if(DEFINED file_${name})
        set(file "${file_${name}}")
    endif()
    file(WRITE "${out}/${file}.sctrl" "${text}")
endforeach()
list(LENGTH names count)
message(STATUS "Wrote ${count} state controller templates to ${out}")
