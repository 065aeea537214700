-- A session with TvDelay on a track, for Ardour's own window: it opens the mixer, the plug-in window
-- beside the track's strip.
local folder = os.getenv("TVDELAY_SESSION")
AudioEngine:set_backend("None (Dummy)", "", "")
AudioEngine:start()
local session = assert(create_session(folder, "session", 44100))
local processor = ARDOUR.LuaAPI.new_plugin(session, "TvDelay", ARDOUR.PluginType.LXVST, "")
assert(not processor:isnil(), "Ardour does not know the plug-in")
local track = session:new_audio_track(2, 2, nil, 1, "track", ARDOUR.PresentationInfo.max_order,
    ARDOUR.TrackMode.Normal, true):front()
assert(track:add_processor_by_index(processor, 0, nil, true) == 0, "the track refuses it")
track:presentation_info_ptr():set_color(0x00ff00ff) -- any would do that no processor has
local window = string.format("P-%s-%s", track:to_stateful():id():to_s(),
    processor:to_stateful():id():to_s())
session:save_state("")
close_session()

local file = assert(io.open(folder .. "/session.ardour"))
local saved = file:read("a")
file:close()
local shown, places = saved:gsub("</Session>\n?$", string.format([[
  <Extra>
    <UI>
      <Window name="%s" visible="1" x-off="800" y-off="100" x-size="392" y-size="440" custom-ui="1"/>
    </UI>
  </Extra>
</Session>
]], window))
assert(places == 1, "the session file ends otherwise")
file = assert(io.open(folder .. "/session.ardour", "w"))
file:write(shown)
file:close()

file = assert(io.open(folder .. "/instant.xml", "w"))
file:write([[
<?xml version="1.0" encoding="UTF-8"?>
<instant>
  <Main x="0" y="0" w="1280" h="740" current-tab="mixer"/>
</instant>
]])
file:close()
