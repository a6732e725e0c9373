-- SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
-- SPDX-License-Identifier: GPL-3.0-or-later

-- What pandoc does to the chapters: includes what was generated, leaves appendices without a number,
-- keeps together what would look lost apart, and ends where a file, a picture or the target of a link
-- is missing. Pictures and the directory "generated" are looked for where pandoc runs.

local function include(block)
  local name = block.text:match("^<!%-%-%s*include:%s*(%S+)%s*%-%->%s*$")
  if not name then
    if block.text:match("include") then
      error("not understood: " .. block.text)
    end
    return nil
  end
  local file = io.open("generated/" .. name, "r")
  if not file then
    error("there is no " .. name .. " to include")
  end
  local text = file:read("a")
  file:close()
  return pandoc.read(text, "markdown").blocks
end

local function check_picture(image)
  local file = io.open(image.src, "rb")
  if not file then
    error("there is no picture " .. image.src .. "; if one was removed, remove pictures.stamp too")
  end
  file:close()
end

local function has_class(element, class)
  return element.classes:includes(class)
end

-- A table that may as well go to the next page as a whole.
local short_table = 6

local function mark_short_table(element)
  local rows = 0
  for _, body in ipairs(element.bodies) do
    rows = rows + #body.body
  end
  if rows <= short_table then
    element.classes:insert("short")
  end
  return element
end

-- "What is heard:" belongs to what comes below it.
local function keep_lead_ins(blocks)
  local followers = {CodeBlock = true, Table = true, BulletList = true, OrderedList = true, Div = true}
  for i = 1, #blocks - 1 do
    local is_lead_in = blocks[i].t == "Para" and pandoc.utils.stringify(blocks[i]):match(":$")
    if is_lead_in and followers[blocks[i + 1].t] then
      blocks[i] = pandoc.Div({blocks[i]}, pandoc.Attr("", {"lead-in"}))
    end
  end
  return blocks
end

local units = pandoc.List({"m", "cm", "s", "min", "h", "Hz", "m/s", "cm/s", "dB", "mbar", "°C", "%", "ms"})

-- Captions are searched for as they stand on the screen.
local function keep_dots(str)
  return pandoc.Str((str.text:gsub("\u{2026}", "...")))
end

-- No line ends between a number and its unit.
local function keep_units(inlines)
  for i = 2, #inlines - 1 do
    local before, after = inlines[i - 1], inlines[i + 1]
    local is_gap = inlines[i].t == "Space" or inlines[i].t == "SoftBreak"
    if is_gap and before.t == "Str" and before.text:match("%d$") and after.t == "Str"
        and units:includes((after.text:gsub("[.,;:)]+$", ""))) then
      inlines[i] = pandoc.Str("\u{a0}")
    end
  end
  return inlines
end

local in_appendix = false

local function leave_appendix_unnumbered(header)
  if header.level == 1 then
    in_appendix = pandoc.utils.stringify(header):match("^Appendix") ~= nil
  end
  if in_appendix and not has_class(header, "unnumbered") then
    header.classes:insert("unnumbered")
  end
  return header
end

local function check_links(body)
  local targets = {}
  local function note(element)
    if element.identifier ~= "" then
      targets["#" .. element.identifier] = true
    end
  end
  pandoc.walk_block(body, {Header = note, Div = note, Span = note, Table = note})
  pandoc.walk_block(body, {Link = function(link)
    if link.target:match("^#") and not targets[link.target] then
      error("there is no target for the link " .. link.target)
    end
  end})
end

function Pandoc(doc)
  local body = pandoc.walk_block(pandoc.Div(doc.blocks), {RawBlock = include})
  body = pandoc.walk_block(body, {Header = leave_appendix_unnumbered, Image = check_picture,
    Str = keep_dots, Table = mark_short_table, Inlines = keep_units})
  body = pandoc.walk_block(body, {Blocks = keep_lead_ins})
  check_links(body)
  doc.blocks = body.content
  return doc
end
