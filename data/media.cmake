# The pictures, sounds and help documents carried inside the program, read
# as ":/pictures/let_a.png", ReadResource("sounds/101.wav"),
# ReadResource("help/z_a_aide.htm")... The pictures are made by
# tools/pictures (ostrane-draw, once plain and once with --scale 2), the sounds by tools/sounds/make_sounds.py.
set(OSTRANE_PICTURE_FILES
  pictures/board_chocolat.png pictures/board_classique.png pictures/board_relief.png
  pictures/let_a.png pictures/let_b.png pictures/let_blank.png pictures/let_c.png
  pictures/let_d.png pictures/let_e.png pictures/let_f.png pictures/let_g.png pictures/let_h.png
  pictures/let_i.png pictures/let_j.png pictures/let_k.png pictures/let_l.png pictures/let_m.png
  pictures/let_n.png pictures/let_o.png pictures/let_p.png pictures/let_q.png pictures/let_r.png
  pictures/let_s.png pictures/let_t.png pictures/let_u.png pictures/let_v.png pictures/let_w.png
  pictures/let_x.png pictures/let_y.png pictures/let_z.png
  pictures/jok_a.png pictures/jok_b.png pictures/jok_c.png pictures/jok_d.png pictures/jok_e.png
  pictures/jok_f.png pictures/jok_g.png pictures/jok_h.png pictures/jok_i.png pictures/jok_j.png
  pictures/jok_k.png pictures/jok_l.png pictures/jok_m.png pictures/jok_n.png pictures/jok_o.png
  pictures/jok_p.png pictures/jok_q.png pictures/jok_r.png pictures/jok_s.png pictures/jok_t.png
  pictures/jok_u.png pictures/jok_v.png pictures/jok_w.png pictures/jok_x.png pictures/jok_y.png
  pictures/jok_z.png
  pictures/arrow_h.png pictures/arrow_v.png pictures/ostrane.png pictures/slot_empty.png
  pictures/sound_off.png pictures/sound_on.png pictures/tick_off.png pictures/tick_on.png
  pictures/wait_1.png pictures/wait_2.png pictures/wait_3.png)
# The same pictures drawn for high-density screens (ostrane-draw --scale 2).
set(OSTRANE_PICTURE_FILES_2X ${OSTRANE_PICTURE_FILES})
list(TRANSFORM OSTRANE_PICTURE_FILES_2X REPLACE "\\.png$" "@2x.png")
set(OSTRANE_SOUND_FILES
  sounds/101.wav sounds/102.wav sounds/103.wav sounds/104.wav sounds/105.wav sounds/106.wav)
set(OSTRANE_HELP_FILES
  help/z_a_aide.htm help/lecran.rtf)

qt_add_resources(ostrane_data "ostrane_media"
  PREFIX "/"
  BASE ${CMAKE_CURRENT_SOURCE_DIR}
  FILES ${OSTRANE_PICTURE_FILES} ${OSTRANE_PICTURE_FILES_2X} ${OSTRANE_SOUND_FILES} ${OSTRANE_HELP_FILES})
