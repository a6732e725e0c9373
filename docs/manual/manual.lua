-- SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
-- SPDX-License-Identifier: GPL-3.0-or-later

-- What pandoc does to the chapters: includes what was generated, leaves appendices without a number,
-- and ends where a file, a picture or the target of a link is missing. Pictures and the directory
-- "generated" are looked for in the directory where pandoc runs.

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
    error("there is no picture " .. image.src)
  end
  file:close()
end

local function has_class(element, class)
  return element.classes:includes(class)
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
  body = pandoc.walk_block(body, {Header = leave_appendix_unnumbered, Image = check_picture})
  check_links(body)
  doc.blocks = body.content
  return doc
end
